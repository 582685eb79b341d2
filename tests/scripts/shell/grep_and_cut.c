// A wrong type is no file and no text; the texts may be longer than 4095 bytes.
int main()
{
int i;
ifile_write("g_log.txt", "INFO,start,1\r\nWARN,disk.*,2\nINFO,stop,3");
printf("[%s] [%s]\n", igrep("g_log.txt", "disk.*"), igrep("g_log.txt", "info"));
printf("[%s]\n", icut(igrep("g_log.txt", "INFO"), ",", 3));
printf("[%s] [%s] %d [%s]\n", igrep("g_log.txt", 5), icut(5, ",", 1), igrep_count(5, "a"), itail(5, 1));
printf("[%s] [%s] [%s]\n", icat("g_none.txt"), ihead(".", 1), itail("g_log.txt", 0 - 1));
$s = "0123456789";
for (i = 0; i < 9; i++) $s = $s + $s;
ifile_write("g_log.txt", $s);
printf("%d %d %d\n", morv_strlen(icat("g_log.txt")), morv_strlen(ihead("g_log.txt", 1)), morv_strlen(itail("g_log.txt", 1)));
return 0;
}
