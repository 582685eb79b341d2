int main()
{
  printf("[%s]\n", morv_json_get("\"caf\\u00e9 \\u0041 \\/ \\\"q\\\"\"", ""));
  printf("[%s]\n", morv_json_get("\"one\\ntwo\"", ""));
  printf("[%s]\n", morv_json_get("{\"a\":\"never ends}", "a"));
  printf("[%s]\n", morv_json_get("{\"a\":1,\"b\":[2", "a"));
  printf("[%s]\n", morv_json_get("{\"a\":1,\"b\":[2", "b"));
  printf("[%s]\n", morv_json_get("[1 2]", "1"));
  printf("[%s] [%s]\n", morv_json_get(5, "a"), morv_json_get("[1]", 0));
  return 0;
}
