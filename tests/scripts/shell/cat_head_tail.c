int main()
{
int i;
ifile_write("h_a.txt", "1\n2\n3\n4");
printf("[%s]\n", icat("h_a.txt"));
printf("[%s]\n", ihead("h_a.txt", 2));
printf("[%s]\n", itail("h_a.txt", 2));
printf("[%s] [%s]\n", ihead("h_a.txt", 0), itail("h_a.txt", 0 - 1));
printf("%d %d\n", morv_strlen(ihead("h_a.txt", 99)), morv_strlen(itail("h_a.txt", 99)));
printf("[%s] [%s] [%s]\n", icat("h_none.txt"), ihead(".", 1), itail(5, 1));
$s = "0123456789";
for (i = 0; i < 9; i++) $s = $s + $s;
ifile_write("h_a.txt", $s);
printf("%d %d %d\n", morv_strlen(icat("h_a.txt")), morv_strlen(ihead("h_a.txt", 1)), morv_strlen(itail("h_a.txt", 1)));
return 0;
}
