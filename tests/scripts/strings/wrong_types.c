int main()
{
printf("%d %d %d\n", morv_strcmp(5, "5"), morv_strcmp("5", 5), morv_strcmp(5, 6));
printf("%d %d %d\n", morv_strstr(5, "5"), morv_search_txt("5", 5), morv_strlen(5));
printf("%d %d\n", morv_starts_with(5, "5"), morv_ends_with("5", 5));
printf("[%s][%s][%s]\n", morv_substr(5, 0, 1), morv_substr("5", "0", 1), morv_upper(5));
printf("[%s][%s][%s]\n", morv_trim(5), morv_replace_all("a", 5, "b"), morv_html_escape(5));
printf("[%s][%s]\n", morv_hex("ff", 2), morv_bin(5, "8"));
printf("%d %d %d\n", morv_parse_hex(10), morv_atoi(10), morv_bits("1", 0, 1));
printf("[%s] [%s] %d %d\n", morv_json_get(5, "a"), morv_json_get("[1]", 0), morv_version_cmp(1, "2"), morv_version_cmp("2", 1));
printf("[%s] [%s] [%s] %d %d\n", morv_re(5, "5"), morv_re("5", 5), ised("a", 5), ised_file(5, "s/a/b/"), ised_file("f.txt", 5));
return 0;
}
