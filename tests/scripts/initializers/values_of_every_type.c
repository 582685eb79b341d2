int a = 5; int b = -7; long l = 5000000000; long long ll = -5000000000; unsigned u = 4000000000;
double d = 2.5; double dn = -2.25; double di = 3; float f = 1.5; float fn = -0.5; float fi = 4; int id = 2.9;
char c = 'x'; short s = 300; bool bo = true; UINT8 u8 = 200; UINT16 u16 = 65535; INT64 i64 = -1; wchar_t w = 99;
char *t = "text"; char *n = 0; const int k = 12; static int st = 13; volatile int v = 14; static const char *sc = "sc";
int one = 1, *pointer, last = 4, listed[2] = {5, 6};
int main()
{
  int la = 5; int lb = -7; double ld = 2.5; double ldn = -2.25; double ldi = 3; float lf = 1.5; int lid = 2.9;
  char lc = 'x'; short ls = 300; UINT8 lu8 = 200; INT64 li64 = -1; char *lt = "local"; char *ln = 0;
  const int lk = 12; static int lst = 13; static char *lsc = "lsc"; int sum = la + lb * 2, next = sum + 1; int *lp = &la;
  printf("%d %d %lld %lld %u", a, b, l, ll, u);
  printf("%g %g %g %g %g %g %d", d, dn, di, f, fn, fi, id);
  printf("%d %d %d %d %d %d %d", c, s, bo, u8, u16, i64, w);
  printf("%s %d %d %d %d %s", t, n == 0, k, st, v, sc);
  printf("%d %d %d", one, last, listed[1]);
  printf("%d %d %g %g %g %g %d", la, lb, ld, ldn, ldi, lf, lid);
  printf("%d %d %d %lld %s %d", lc, ls, lu8, li64, lt, ln == 0);
  printf("%d %d %s %d %d %d", lk, lst, lsc, sum, next, *lp);
  return 0;
}
