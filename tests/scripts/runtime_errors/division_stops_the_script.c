int g;
int share(int a, int b) { g = 1; return a / b; }
int main()
{
  int i;
  for (i = 2; i >= 0; i--) { g = 0; printf("%d\n", share(8, i)); }
  printf("never\n");
  return 0;
}
printf("before main\n");
