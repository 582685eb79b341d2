int main()
{
  char *a; char *b;
  printf("%d\n", "ab" == "cd");
  printf("%d\n", "ab" != "cd");
  a = "same"; b = "same";
  printf("%d\n", morv_strcmp(a, b));
  printf("%d\n", !"text");
  $t = "text";
  printf("%d\n", !$t);
  return 0;
}
