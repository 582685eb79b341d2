int free_list(int h)
{
  morv_list_free(h);
  return 7;
}

int main()
{
  int h; int g; int i;
  double half;
  half = 0.5;
  for (i = 0; i < 3; i++) {
    h = morv_list_new();
    g = morv_list_new();
    morv_list_add(h, morv_concat("entry ", i, " of ", 3, " and ", half));
    morv_list_add(h, morv_list_get(h, 0));
    morv_list_add(g, morv_list_get(h, morv_list_count(h) - 1));
    $kept = morv_list_get(h, 1);
    $joined = morv_concat(morv_list_get(h, 0), "|", morv_list_get(g, 0), "|", morv_list_get(h, 9));
    printf("[%s] [%s] %d\n", morv_list_get(g, 0), $joined, morv_strlen($joined));
    $before = morv_concat(morv_list_get(h, 0), free_list(h));
    $after = morv_concat(morv_list_get(g, 0), morv_list_free(g), morv_list_get(g, 0));
    printf("%s %s %s\n", $kept, $before, $after);
  }
  $long = morv_concat("0123456789012345678901234567890123456789012345678901234567890123", -2147483648);
  $long = morv_concat($long, $long, $long, 1, $long, 2);
  printf("%d %s\n", morv_strlen($long), morv_substr($long, 200, 400));
  return 0;
}
