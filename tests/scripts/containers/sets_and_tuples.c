int main()
{
  int s; int t;
  s = morv_set_new();
  printf("%d\n", morv_set_add(s, "pear"));
  printf("%d\n", morv_set_add(s, "fig"));
  printf("%d\n", morv_set_add(s, "pear"));
  printf("%d\n", morv_set_add(s, ""));
  printf("%d\n", morv_set_remove(s, "pear"));
  printf("%d\n", morv_set_remove(s, "pear"));
  printf("%d\n", morv_set_add(s, "pear"));
  printf("%d %d %d\n", morv_set_has(s, ""), morv_set_has(s, "plum"), morv_set_count(s));
  printf("[%s]\n", morv_join(morv_set_items(s), "|"));
  t = morv_tuple_new();
  morv_tuple_add(t, "x");
  printf("[%s]\n", morv_tuple_get(t, 1));
  printf("%d\n", morv_tuple_add(t, "y"));
  printf("[%s]\n", morv_tuple_get(t, 1));
  printf("%d\n", morv_tuple_add(t, "z"));
  printf("%d\n", morv_tuple_count(t));
  return 0;
}
