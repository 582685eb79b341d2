int main()
{
ifile_write("l_a.txt", "one\r\ntwo\n\nfour");
ifile_write("l_b.txt", "one\ntwo\n\nFOUR\n");
ifile_write("l_empty.txt", "");
printf("%d %d %d\n", morv_file_lines("l_a.txt"), morv_file_lines("l_empty.txt"), morv_file_lines("l_none.txt"));
printf("[%s][%s][%s]\n", morv_file_line("l_a.txt", 1), morv_file_line("l_a.txt", 3), morv_file_line("l_a.txt", 4));
printf("[%s][%s]\n", morv_file_line("l_a.txt", 0), morv_file_line("l_a.txt", 5));
printf("%d %d\n", morv_file_diff("l_a.txt", "l_b.txt"), morv_file_diff("l_a.txt", "l_a.txt"));
printf("%d %d\n", morv_file_diff("l_a.txt", "l_empty.txt"), morv_file_diff("l_a.txt", "l_none.txt"));
printf("%d %d\n", morv_file_contains("l_a.txt", "two"), morv_file_contains("l_a.txt", "TWO"));
printf("%d %d\n", morv_file_contains("l_none.txt", "two"), morv_file_contains("l_none.txt", ""));
printf("%d %d [%s] %d\n", ifile_lines(1), ifile_diff("l_a.txt", 1), ifile_line("l_a.txt", "1"), ifile_contains("l_a.txt", 1));
return 0;
}
