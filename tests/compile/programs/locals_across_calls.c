// calls: run(3, 4); loop(6)
// modes: -addr32; -cpu32
int twist(int a) { int x; int y; int z; x = a + 1; y = x * 2; z = y - a; return x + y + z; }
int run(int a, int b)
{
  int c; int d; int e;
  c = a + b;
  d = twist(c);
  e = c * d;
  a = twist(a) + twist(b) * 2;
  return a + b * 3 + c * 5 + d * 7 + e * 11;
}
int loop(int n)
{
  int i; int s; int last;
  s = 0;
  last = 1;
  for (i = 0; i < n; i++) { last = twist(i + last) % 50; s = s + last * i; }
  return s + last;
}
