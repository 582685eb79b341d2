int main()
{
int i;
printf("%d %d\n", morv_file_write("w_a.txt", "one\ntwo"), morv_file_size("w_a.txt"));
printf("[%s]\n", morv_file_read("w_a.txt"));
printf("%d [%s]\n", morv_file_write("w_a.txt", ""), ifile_read("w_a.txt"));
printf("%d %d\n", morv_file_write("/dev/full", "x"), morv_file_write("no/such/folder", "x"));
printf("[%s] %d %d\n", morv_file_read("w_none.txt"), morv_file_size("w_none.txt"), morv_file_mtime("w_none.txt"));
printf("[%s] %d %d\n", morv_file_read("."), morv_file_size("."), morv_file_exists("."));
$s = "x";
for (i = 0; i < 12; i++) $s = $s + $s;
morv_file_write("w_full.txt", $s);
printf("%d [%s]\n", morv_file_size("w_full.txt"), morv_file_read("w_full.txt"));
morv_file_write("w_fits.txt", morv_substr($s, 0, 4095));
printf("%d\n", morv_strlen(morv_file_read("w_fits.txt")));
printf("%d [%s] %d\n", morv_file_write("w_a.txt", 5), morv_file_read(5), morv_file_exists(5));
return 0;
}
