int list;
char *pick(int n)
{
  $t = morv_concat("<", morv_list_get(list, n), ">");
  return $t;
}
int depth(int n)
{
  if (n == 0) return 0;
  printf("%s\n", morv_concat(morv_list_get(list, n), depth(n - 1), morv_list_get(list, 0)));
  return n;
}
int main()
{
  int i; char *p; char *q;
  list = morv_list_new();
  for (i = 0; i < 5; i++) morv_list_add(list, morv_concat("item", i));
  printf("%s %s\n", morv_list_get(list, 1), morv_list_get(list, 2));
  printf("%s %s %s\n", morv_list_get(list, 1), pick(2), morv_list_get(list, 3));
  depth(3);
  p = morv_list_get(list, 4);
  q = morv_list_get(list, 3);
  printf("%s %s\n", p, q);
  $a = morv_list_get(list, 0);
  $b = morv_list_get(list, 1);
  $c = $a + $b;
  printf("%s %s %s\n", $a, $b, $c);
  for (i = 0; i < 3; i++) { p = morv_concat("loop", i); $l = morv_concat(p, "-", morv_concat("in", morv_concat("ner", i))); printf("%s %s\n", p, $l); }
  printf("%d\n", morv_strcmp(morv_list_get(list, 1), morv_list_get(list, 1)));
  morv_list_add(list, morv_list_get(list, 0));
  printf("%s\n", morv_list_get(list, 5));
  return 0;
}
