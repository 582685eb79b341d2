int main()
{
printf("before\n");
morv_exec("echo one   \"two  three\" fo\"u\"r");
morv_exec("echo $HOME * ; 'x'");
morv_exec("echo \"a \\\"b\\\" \\\\ | c\"");
morv_exec("echo shell * >/dev/null; echo 'two  blanks'");
morv_exec("echo \"open to | the end");
printf("after\n");
printf("%d %d %d\n", morv_exec("sh -c \"kill -TERM $$\""), morv_exec(7), morv_exec_to_file("true", 7));
return 0;
}
