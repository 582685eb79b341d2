// calls: run(300, 70000); run(-1, -1)
// modes: -addr32; -cpu32
int take(char a, UCHAR b, short c, UINT16 d) { return a + b * 3 + c * 5 + d * 7; }
int run(int x, int y)
{
  char a; UCHAR b; short c; UINT16 d;
  a = x; b = x; c = y; d = y;
  return take(a, b, c, d);
}
