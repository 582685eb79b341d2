int main()
{
  int i; int j; int n;
  n = 0;
  for (i = 0, j = 0; i < 3, j < 5; i++, j++) n = n + 1;
  printf("%d %d %d\n", i, j, n);
  n = 0;
  for (i = 0, j = 9; i < j; i++, j--) n = n + 1;
  printf("%d %d %d\n", i, j, n);
  for (int k = 0; k < 2; k++) { int k2 = k * 10; printf("%d %d\n", k, k2); }
  for (i = 0; i < 3; i++) for (j = 0; j <= i; j++) if (i + j == 3) printf("%d+%d\n", i, j);
  return 0;
}
