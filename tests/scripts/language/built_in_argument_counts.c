int main()
{
  printf("%d\n", morv_strlen(5));
  printf("[%s]\n", morv_upper(5));
  printf("%d\n", morv_strlen("a", "b"));
  printf("never\n");
  return 0;
}
