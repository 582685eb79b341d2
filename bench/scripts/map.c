int main()
{
  int i;
  int total;
  int ages;
  ages = morv_map_new();
  for (i = 0; i < 100000; i++) morv_map_set(ages, isprint("key", i), isprint(i));
  total = 0;
  for (i = 0; i < 100000; i++) total = total + morv_atoi(morv_map_get(ages, isprint("key", i))) % 10;
  printf("%d %d\n", morv_map_count(ages), total);
  return 0;
}
