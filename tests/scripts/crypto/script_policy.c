int main()
{
morv_file_write("one.js", "alert(1);");
morv_file_write("two.js", "alert(2);");
printf("[%s]\n", morv_script_srcs());
printf("%s\n", morv_script("one.js"));
printf("%s\n", morv_script_src("two.js"));
morv_script("one.js");
printf("[%s] [%s]\n", morv_script("none.js"), morv_script_src("none.js"));
printf("script-src %s\n", morv_script_srcs());
return 0;
}
