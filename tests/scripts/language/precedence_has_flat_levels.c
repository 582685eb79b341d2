int main()
{
  int a;
  printf("%d\n", 2 + 3 * 4 - 1);
  printf("%d\n", 5 == 3 < 2);
  printf("%d\n", 3 > 2 == 1);
  printf("%d\n", 1 | 6 & 4);
  printf("%d\n", 6 & 4 | 1);
  printf("%d\n", 4 ^ 1 & 1);
  printf("%d\n", 6 & 2 == 2);
  printf("%d\n", 1 << 2 + 1);
  printf("%d\n", 0 && 0 || 1);
  printf("%d\n", 1 || 0 && 0);
  printf("%d\n", -2 * 3);
  printf("%d\n", 10 - 3 - 2);
  printf("%d\n", 100 / 5 / 2);
  a = 1;
  a += 2 * 3;
  printf("%d\n", a);
  printf("%d\n", !1 + 1);
  printf("%d\n", ~1 & 7);
  return 0;
}
