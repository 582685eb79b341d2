int main()
{
  int h; int i; int m;
  h = morv_list_new();
  i = 0;
  while (i < 1000) {
    morv_list_add(h, "ab,");
    i = i + 1;
  }
  printf("%d\n", morv_strlen(morv_join(h, "")));
  printf("%d\n", morv_strlen(morv_join(h, "--")));
  m = morv_map_new();
  morv_map_set(m, "long", morv_concat(morv_join(h, ""), morv_join(h, "")));
  printf("%d\n", morv_strlen(morv_map_get(m, "long")));
  printf("%d\n", morv_list_count(morv_split(morv_concat(morv_join(h, ""), morv_join(h, "")), ",")));
  return 0;
}
