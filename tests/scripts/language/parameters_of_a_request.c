int main()
{
  int i;
  morv_setenv("QUERY_STRING", "a=1&b=x%20y+z&empty=&ab=two&a=second&c=%zz%4&last");
  printf("[%s] [%s] [%s]\n", morv_getparam("a"), morv_getparam("b"), morv_getparam("empty"));
  printf("[%s] [%s] [%s]\n", morv_getparam("ab"), morv_getparam("c"), morv_getparam("last"));
  printf("[%s] [%s] [%s]\n", morv_getparam("A"), morv_getparam(""), morv_getparam("missing"));
  printf("[%s]\n", morv_getparam(5));
  $long = "v=";
  for (i = 0; i < 110; i++) $long += "0123456789";
  morv_setenv("QUERY_STRING", $long);
  printf("%d\n", morv_strlen(morv_getparam("v")));
  return 0;
}
