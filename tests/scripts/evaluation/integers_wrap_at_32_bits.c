// Each line is printed three times over: later turns run the expression in its integer form.
int main()
{
  int z; int big; int least; int n; long wide;
  big = 2147483647; least = 0 - big - 1; n = 0 - 7; wide = 4294967299;
  for (z = 0; z < 3; z++) {
    printf("%d %d %d\n", big + 1, least - 1, big * 2);
    printf("%d %d %d %d\n", n / 2, n % 2, 7 / n, 7 % n);
    printf("%d %d %d\n", least / (0 - 1), least % (0 - 1), -least);
    printf("%d %d %d %d\n", 1 << 33, 1 << 31, n >> 1, n >> 33);
    printf("%d %d %d\n", n & 255, n | 8, n ^ 1);
    printf("%d %d %d\n", ~n, !n, !!n);
    printf("%d %d %d\n", wide + 0, wide * 1, wide == 3);
  }
  return 0;
}
// turns: 3
