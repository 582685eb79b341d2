int main()
{
  int a[2];
  a[0] = 1;
  printf("%d\n", a[0][0]);
  printf("never\n");
  return 0;
}
