int main()
{
  int i; int last;
  i = 0;
  while (i < 4095) {
    last = morv_set_new();
    morv_set_free(last);
    i = i + 1;
  }
  printf("%d %d %d %d\n", last, morv_set_new(), morv_set_new(), morv_list_new());
  return 0;
}
