int main()
{
  int a[2];
  a[0] = 1;
  printf("%d\n", a[0]);
  a++;
  printf("never\n");
  return 0;
}
