int main()
{
  printf("%d %d %d\n", morv_strlen(5), morv_strstr(5, "a"), morv_starts_with(1, "a"));
  printf("[%s] [%s] [%s] [%s]\n", morv_upper(5), morv_trim(1.5), morv_replace_all("a", 5, "b"), morv_substr(5, 0, 1));
  printf("%d %d %d\n", morv_list_add("h", "a"), morv_list_count("h"), morv_map_has(1.5, "k"));
  printf("[%s] [%s] [%s]\n", morv_sha256(5), morv_base64(5), morv_json_get(5, "a"));
  printf("[%s] %d\n", morv_file_read(5), morv_file_exists(5));
  printf("[%s] [%s]\n", morv_getparam(5), morv_getenv(5));
  printf("%d %d\n", morv_list_new(), morv_map_new());
  printf("%d\n", morv_strlen(morv_upper("text") + "s"));
  return 0;
}
