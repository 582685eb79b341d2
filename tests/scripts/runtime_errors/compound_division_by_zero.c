int main()
{
  double d; int x;
  d = 6.5; d /= 0.0;
  printf("%g\n", d);
  x = 7; x /= 2.0; printf("%d\n", x);
  d = 9; d %= 0.5;
  printf("never\n");
  return 0;
}
