// calls: fill(5); reverse(); sum(); chars(); copy(4); texts(1); texts(3)
// modes: -o1; -cpu32
int fill(int n) { int a[10]; int i; for (i = 0; i < 10; i++) a[i] = i * n; return a[3] * 1000 + a[9]; }
int reverse()
{
  int a[5] = {1, 2, 3, 4, 5};
  int i; int t;
  for (i = 0; i < 2; i++) { t = a[i]; a[i] = a[4 - i]; a[4 - i] = t; }
  return a[0] * 10000 + a[1] * 1000 + a[2] * 100 + a[3] * 10 + a[4];
}
int sum() { short a[4]; int i; int s; a[0] = -5; a[1] = 300; a[2] = a[0] * a[1]; a[3] = a[2] + 1; s = 0; for (i = 0; i < 4; i++) s += a[i]; return s; }
int chars() { char a[4]; UCHAR b[4]; a[0] = 200; b[0] = 200; a[1] = a[0] + 1; b[1] = b[0] + 100; return a[0] + b[0] * 2 + a[1] * 3 + b[1] * 4; }
int copy(int n) { int a[4]; int b[4]; int i; for (i = 0; i < n; i++) a[i] = i + 1; for (i = 0; i < n; i++) b[i] = a[n - 1 - i]; return b[0] * 1000 + b[1] * 100 + b[2] * 10 + b[3]; }
int texts(int i) { char s[4] = "abc"; char t[6] = "de"; return s[i] * 1000 + t[i] * 10 + t[5]; }
