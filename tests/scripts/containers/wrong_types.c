int main()
{
  int h;
  h = morv_list_new();
  morv_list_add(h, "a");
  printf("%d %d %d\n", morv_list_add(h, 5), morv_list_add("1", "b"), morv_list_count(h));
  printf("[%s] [%s] %d\n", morv_list_get(h, "0"), morv_list_get("1", 0), morv_list_count("1"));
  printf("%d %d [%s]\n", morv_split(5, ","), morv_split("a,b", 5), morv_join(h, 5));
  h = morv_map_new();
  morv_map_set(h, "k", "v");
  printf("%d %d %d\n", morv_map_set(h, 1, "v"), morv_map_set(h, "n", 1), morv_map_count(h));
  printf("[%s] %d %d %d\n", morv_map_get(h, 1), morv_map_has(h, 1), morv_map_delete(h, 1), morv_map_delete("1", "k"));
  h = morv_set_new();
  printf("%d %d %d\n", morv_set_add(h, 1), morv_set_remove(h, 1), morv_set_remove("1", "a"));
  h = morv_tuple_new();
  morv_tuple_add(h, "a");
  printf("[%s] %d\n", morv_tuple_get(h, "0"), morv_tuple_add(h, 5));
  printf("%d\n", morv_tuple_add(h, "b"));
  printf("%d %d\n", morv_bin_read(5), morv_bin_size("1"));
  return 0;
}
