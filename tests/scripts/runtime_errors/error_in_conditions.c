int main()
{
  int i; int a[2];
  a[0] = 3; a[1] = 0;
  for (i = 0; 6 / a[i]; i++)
    printf("turn %d\n", i);
  printf("never\n");
  return 0;
}
