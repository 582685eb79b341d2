int main()
{
  int m; int i; int wrong; int keys;
  m = morv_map_new();
  i = 0;
  while (i < 20000) {
    morv_map_set(m, isprint("key ", i), isprint("value ", i));
    i = i + 1;
  }
  wrong = 0;
  i = 0;
  while (i < 20000) {
    if (morv_strcmp(morv_map_get(m, isprint("key ", i)), isprint("value ", i)) != 0) wrong = wrong + 1;
    i = i + 1;
  }
  printf("%d %d\n", morv_map_count(m), wrong);
  i = 0;
  while (i < 19998) {
    if (morv_map_delete(m, isprint("key ", i)) != 1) wrong = wrong + 1;
    i = i + 1;
  }
  keys = morv_map_keys(m);
  printf("%d %d %s\n", morv_map_count(m), wrong, morv_join(keys, "|"));
  return 0;
}
