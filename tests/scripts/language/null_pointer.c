int main()
{
  char *p;
  p = 0;
  printf("before\n");
  printf("%d\n", *p);
  printf("never\n");
  return 0;
}
