int main()
{
ifile_write("g_log.txt", "INFO,start,1\r\nWARN,disk.*,2\nINFO,stop,3");
printf("[%s]\n", igrep("g_log.txt", "INFO"));
printf("[%s] [%s]\n", igrep("g_log.txt", "disk.*"), igrep("g_log.txt", "info"));
printf("%d %d %d\n", igrep_count("g_log.txt", "INFO"), igrep_count("g_log.txt", ""), igrep_count("g_none.txt", "a"));
printf("[%s]\n", icut(igrep("g_log.txt", "INFO"), ",", 3));
printf("[%s]\n", icut("a::b\nc\n", "::", 2));
printf("[%s] [%s] [%s]\n", icut("a,b", "", 1), icut("a,b", ",", 0), icut(5, ",", 1));
printf("[%s] %d\n", igrep("g_log.txt", 5), igrep_count(5, "a"));
return 0;
}
