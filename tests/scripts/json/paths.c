int main()
{
  printf("%s\n", morv_json_get("{\"a\":[1,{\"b\":\"x\"}]}", "a.1.b"));
  printf("%s\n", morv_json_get("{\"a\":[1,{\"b\":\"x\"}]}", "a.1"));
  printf("%s\n", morv_json_get("{\"a\":[1,{\"b\":\"x\"}]}", ""));
  printf("[%s]\n", morv_json_get("{\"a\":[1,{\"b\":\"x\"}]}", "a.2"));
  printf("[%s]\n", morv_json_get("{\"a.b\":1,\"0\":2}", "a.b"));
  printf("[%s]\n", morv_json_get("{\"a.b\":1,\"0\":2}", "0"));
  printf("[%s]\n", morv_json_get("[null, true, -1.50]", "0"));
  printf("[%s]\n", morv_json_get("[null, true, -1.50]", "2"));
  printf("[%s]\n", morv_json_get("{\"k\":\"first\",\"k\":\"second\"}", "k"));
  return 0;
}
