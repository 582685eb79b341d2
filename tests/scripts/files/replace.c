int main()
{
morv_file_write("r_a.txt", "aaaaa and b");
printf("%d %s\n", morv_file_replace("r_a.txt", "aa", "xyz"), morv_file_read("r_a.txt"));
printf("%d %s\n", ifile_replace("r_a.txt", "xyz", ""), morv_file_read("r_a.txt"));
printf("%d %d\n", morv_file_replace("r_a.txt", "none", "x"), morv_file_replace("r_a.txt", "", "x"));
printf("%d %d\n", morv_file_replace("r_none.txt", "a", "b"), morv_file_replace("r_a.txt", 1, "b"));
printf("%d %s\n", morv_file_exists("r_a.txt.vztmp"), morv_file_read("r_a.txt"));
return 0;
}
