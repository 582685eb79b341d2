// calls: run(1); run(4)
// modes: -o1; -cpu32; -addr32
int run(int n)
{
  int a; int b; int c; int d; int e; int f; int g; int h; int i; int j; int k; int l; int m; int o; int p;
  a = n + 1; b = a + 2; c = b * 3; d = c - a; e = d + b; f = e * 2; g = f - c; h = g + d; i = h - e; j = i + f;
  k = j - g; l = k + h; m = l - i; o = m + j; p = o - k;
  if (p > 10) { int q; int r; q = a + p; r = q * 2; p = r - b; } else { int q; q = a * 3; p = q + c; }
  while (a < 20) { int s; s = a * 2; a = s + 1; b = b + s; }
  return a + b * 2 + c * 3 + d * 4 + e * 5 + f * 6 + g * 7 + h * 8 + i * 9 + j + k + l + m + o + p;
}
