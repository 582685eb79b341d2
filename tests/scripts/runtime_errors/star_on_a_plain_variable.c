int main()
{
  int x; int *p;
  x = 3; p = &x; printf("%d\n", *p);
  printf("%d\n", **p);
  return 0;
}
