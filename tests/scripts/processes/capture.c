int main()
{
char *s;
printf("[%s] %d\n", morv_trim(morv_exec_capture("echo out; echo err >&2; exit 3")), morv_exec_status());
printf("[%s] %d\n", morv_exec_capture("no-such-program"), morv_exec_status());
s = morv_exec_capture("head -c 100000 /dev/zero | tr '\\0' x");
printf("%d %d\n", morv_strlen(s), morv_exec_status());
printf("[%s]\n", morv_exec_capture(7));
return 0;
}
