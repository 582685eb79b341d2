int main()
{
  int h; int s; int m;
  h = morv_list_new();
  m = morv_map_new();
  s = morv_set_new();
  printf("%d %d %d\n", h, m, s);
  printf("%d %d\n", morv_tuple_new(), morv_list_new());
  printf("%d\n", morv_list_add(h, "one"));
  morv_list_free(h);
  printf("[%s] %d %d\n", morv_list_get(h, 0), morv_list_count(h), morv_list_add(h, "two"));
  morv_list_free(h);
  printf("%d\n", morv_list_new());
  printf("%d %d %d\n", morv_list_count(0), morv_list_count(4096), morv_list_count(-1));
  printf("%d [%s] %d\n", morv_list_sort(9), morv_join(9, ","), morv_map_count(9));
  printf("%d [%s] %d %d\n", morv_map_set(9, "a", "b"), morv_map_get(9, "a"), morv_map_has(9, "a"), morv_map_keys(9));
  printf("%d %d %d %d %d\n", morv_set_add(9, "a"), morv_set_has(9, "a"), morv_set_count(9), morv_set_remove(9, "a"), morv_set_items(9));
  printf("%d [%s] %d\n", morv_tuple_add(9, "a"), morv_tuple_get(9, 0), morv_tuple_count(9));
  printf("%d %d %d %d %d\n", morv_bin_size(9), morv_bin_get(9, 0), morv_bin_int32(9, 0), morv_bin_find(9, ""), morv_bin_free(9));
  printf("%f\n", morv_bin_float(9, 0));
  return 0;
}
