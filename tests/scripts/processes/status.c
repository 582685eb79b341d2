int main()
{
printf("%d %d\n", morv_exec("true"), morv_exec("false"));
printf("%d %d\n", morv_exec("sh -c \"exit 42\""), morv_exec_status());
printf("%d %d\n", morv_exec("no-such-program"), morv_exec_status());
printf("%d\n", morv_exec("true | exit 5"));
printf("%d\n", morv_exec("sh -c \"kill -TERM $$\""));
printf("%d %d %d\n", morv_exec(""), morv_exec(7), morv_exec_to_file("true", 7));
return 0;
}
