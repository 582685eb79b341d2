long wide;
int main()
{
  int big; double half; char c; short s;
  big = 2147483647;
  printf("%d\n", big + 1);
  printf("%d\n", 65536 * 65536);
  printf("%d\n", 46341 * 46341);
  wide = 65536; wide *= 65536; wide += 10;
  printf("%lld %d %d\n", wide, wide + 1, wide / 2);
  printf("%d %d %d\n", 1 << 33, -8 >> 1, 1 << 31);
  printf("%d %d %d %d\n", 7 / -2, -7 / 2, 7 % -2, -7 % 2);
  printf("%d %d %d\n", 6 & 3, 6 | 3, 6 ^ 3);
  half = 0.5;
  printf("%g %g %g %g\n", half + 1, 2 * half, half / 2, 3 - half);
  printf("%d %d %d\n", half < 1, half == 0.5, 1 > half);
  c = 200;
  printf("%d\n", c + 0);
  c += 0;
  printf("%d\n", c);
  s = 0 - 1;
  printf("%d\n", s + 0);
  big = 0 - 2147483647 - 1;
  printf("%d %d\n", big / -1, big % -1);
  return 0;
}
