int a; int b; int m; int z;
int main()
{
  a = 7; b = 3; m = -9; z = 0;
  printf("%d %d %d", a+++b, a, a---b);
  a = 7;
  printf("%d %d %d %d", a- -b, a+ +b, a-+b, - -a);
  printf("%d %d %d", a * b / 2 % 4, a / b * b, m / b * 2 % 5);
  printf("%d %d %d", a - b - 1, 2 * -b, -a * -b);
  printf("%d %d %d %d", 1 << 2 + 1, 256 >> 1 << 2, m >> 1, 1 << 33);
  printf("%d %d %d", 6 | 1 & 3, 6 & 3 | 8 ^ 1, ~a & 15);
  printf("%d %d %d", a & 1 == 1, a > b == 1, 1 == 1 < 1);
  printf("%d %d %d", 5 > 3 > 1, 3 < 5 != 0, a != b == 0);
  printf("%d %d %d", z || a && z, !z && !a, !a == z);
  printf("%d %d %d", 0x7fffffff + 1, 65536 * 65536, -2147483647 - 2);
  printf("%d %d %d %d", !-1, ~-1, -~1, +-+3);
  printf("%d %d", (a > b) ? a < b ? 1 : 2 : 3, (a < b) ? 1 : (a == 7) ? 2 : 3);
  return 0;
}
