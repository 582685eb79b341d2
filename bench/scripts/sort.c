int main()
{
  int i;
  int n;
  int words;
  words = morv_list_new();
  n = 12345;
  for (i = 0; i < 100000; i++)
  {
    n = (n * 75 + 74) % 65537;
    morv_list_add(words, isprint("word ", n, " ", i));
  }
  morv_list_sort(words);
  printf("%s %s\n", morv_list_get(words, 0), morv_list_get(words, 99999));
  return 0;
}
