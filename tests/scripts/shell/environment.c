int main()
{
printf("[%s] %d [%s]\n", morv_getenv("VORC_TEST_NONE"), morv_setenv("VORC_TEST", "a=b"), igetenv("VORC_TEST"));
printf("%d [%s]\n", isetenv("VORC_TEST", 5), morv_getenv("VORC_TEST"));
printf("%d %d [%s]\n", isetenv("", "x"), isetenv(5, "x"), igetenv(5));
printf("%d %d\n", morv_time() > 1700000000, morv_elapsed_ms());
printf("%d %s\n", morv_strlen(morv_date_string()), morv_substr(morv_date_string(), 0, 2));
return 0;
}
