int main()
{
morv_file_write("log.txt", "something much longer that was there before");
printf("%d\n", morv_exec_to_file("echo out; echo err >&2", "log.txt"));
printf("[%s]\n", morv_trim(morv_file_read("log.txt")));
printf("%d\n", morv_exec_to_file("echo x", "no-such-folder/log.txt"));
printf("%d\n", morv_exec_status());
return 0;
}
