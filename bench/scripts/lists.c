int main()
{
  int list;
  int map;
  int i;
  int length;
  list = morv_list_new();
  map = morv_map_new();
  length = 0;
  for (i = 0; i < 100000; i++) morv_list_add(list, "entry");
  for (i = 0; i < 100000; i++) length = length + morv_strlen(morv_list_get(list, i));
  for (i = 0; i < 50000; i++)
  {
    $key = morv_concat("k", i % 1000);
    morv_map_set(map, $key, "value");
    length = length + morv_map_has(map, $key);
  }
  printf("%d %d\n", length, morv_map_count(map));
  return 0;
}
