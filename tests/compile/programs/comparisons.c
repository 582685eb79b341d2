// calls: six(1, 2); six(2, 2); six(3, 2); six(-1, 1); limits(-2147483647, 2147483647)
// modes: -o1; -cpu32
int six(int a, int b)
{
  return (a < b) + (a > b) * 2 + (a <= b) * 4 + (a >= b) * 8 + (a == b) * 16 + (a != b) * 32;
}
int limits(int a, int b) { return (a < b) * 2 + (b > a); }
