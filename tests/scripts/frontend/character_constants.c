int main()
{
  printf("%d %d %d %d", 'a', 'Z', '0', '_');
  printf("%d %d %d %d %d %d", ' ', '"', '\"', '/', '*', '#');
  printf("%d %d %d %d", ';', '{', '$', '\'');
  printf("%d %d %d %d %d %d %d", '\a', '\b', '\f', '\n', '\r', '\t', '\v');
  printf("%d %d %d", '\\', '\'', '\?');
  printf("%d %d %d %d %d", '\0', '\7', '\101', '\177', '\12');
  printf("%d %d %d %d %d", '\x41', '\x7', '\xff', '\xF', '\x0a');
  printf("%d %d %d", 'A' + 1, '9' - '0', -'a');
  if ('a' < 'b') printf("in order");
  return 0;
}
