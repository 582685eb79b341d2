int main()
{
  int *p; int x;
  x = 1; p = &x; printf("%d\n", *p);
  p = 4660;
  printf("%d\n", p[0]);
  printf("never\n");
  return 0;
}
