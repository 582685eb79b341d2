int main()
{
int h;
imkdir("g_dir");
imkdir("g_dir/sub.txt");
ifile_write("g_dir/b.txt", "");
ifile_write("g_dir/a.txt", "");
ifile_write("g_dir/C.TXT", "");
ifile_write("g_dir/sub.txt/d.txt", "");
h = morv_glob("g_dir/*.txt");
printf("%d %s\n", morv_list_count(h), morv_join(h, ","));
h = iglob("g_dir/none*");
printf("%d %d\n", h, morv_list_count(h));
h = morv_glob_r("g_dir", "?.txt");
printf("%d %s\n", morv_list_count(h), morv_join(h, ","));
printf("%d\n", morv_list_count(iglob_r("g_none", "*")));
printf("%d %d\n", iglob(5), iglob_r("g_dir", 5));
return 0;
}
