// calls: run(1); mixed(5)
// modes: -addr32
int ten(int a, int b, int c, int d, int e, int f, int g, int h, int i, int j)
{
  return a + b * 2 + c * 3 + d * 4 + e * 5 + f * 6 + g * 7 + h * 8 + i * 9 + j * 10;
}
int widths(char a, INT64 b, short c, UINT64 d, int e) { return a + b * 3 + c * 5 + d * 7 + e * 11; }
int run(int n) { return ten(n, n + 1, n + 2, n + 3, n + 4, n + 5, n + 6, n + 7, n + 8, n + 9); }
int mixed(int n)
{
  char c; INT64 w; short s; UINT64 u;
  c = n; w = n * 2; s = n * 3; u = n * 4;
  return widths(c, w, s, u, n * 5);
}
