int main()
{
imkdir("d_dir");
imkdir("d_dir/sub");
ifile_write("d_dir/sub/Two.log", "");
ifile_write("d_dir/a.LOG", "");
imkdir("d_other");
ifile_write("d_other/.hidden", "");
morv_exec("ln -s Two.log d_dir/sub/link.log");
printf("[%s] [%s]\n", ils("d_dir"), ifind("d_dir", "*.log"));
printf("[%s]\n", ils("d_other"));
printf("[%s] [%s]\n", ils("d_none") + ils("d_dir/a.LOG"), ifind("d_none", "*") + ifind("d_dir", "sub"));
printf("%d\n", morv_strcmp(ils(""), ils(".")));
printf("%d [%s] [%s]\n", morv_strcmp(ifind("d_dir", 5), ifind("d_dir", "*")), ils(5), ifind(5, "*"));
printf("%d %d\n", ireplace("d_dir/a.LOG", "a", "b"), ireplace(5, "a", "b"));
return 0;
}
