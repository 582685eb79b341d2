int g; int set(int *p, int v) { *p = v; return v; }
int swap(int *a, int *b) { int t; t = *a; *a = *b; *b = t; return 0; }
int total(int *a, int n) { int i; int s; s = 0; for (i = 0; i < n; i++) s += a[i]; return s; }
int fill(int a[], int n) { int i; for (i = 0; i < n; i++) a[i] = i * i; return n; }
int length(char *s) { int n; n = 0; while (s[n]) n++; return n; }
int shout(char *s) { int i; for (i = 0; s[i]; i++) s[i] = s[i] - 32; return i; }
int main()
{
  int z; int x; int y; int *p; int **pp; int *row[3]; int a[4]; char b[6]; double d; double *q; char c; char *t; long l; long *m;
  for (z = 0; z < 3; z++) {
    x = 5; p = &x; pp = &p; printf("%d %d\n", *p, **pp);
    *p = 6; printf("%d ", x); **pp = 7; printf("%d ", x); *p += 3; printf("%d ", x); *p = *p * *p; printf("%d\n", x);
    p = &g; *p = z; printf("%d ", g - z); g = 9; printf("%d\n", *p);
    d = 2.5; q = &d; *q *= 2; printf("%g %g\n", d, *q); c = 200; t = &c; *t += 1; printf("%d %d\n", c, *t);
    l = 5000000000; m = &l; *m += 1; printf("%lld\n", l);
    x = 1; y = 2; swap(&x, &y); printf("%d %d %d\n", x, y, set(&y, 30)); printf("%d\n", y);
    printf("%d %d %d %d\n", fill(a, 4), a[2], a[3], total(a, 4)); swap(&a[1], &a[3]); printf("%d %d %d\n", a[1], a[3], *a);
    p = &a[2]; *p = 50; printf("%d %d %d\n", a[2], p[0], p[1]); p[1] = 60; printf("%d\n", a[3]);
    row[1] = &x; *row[1] = 70; row[2] = a; printf("%d %d %d\n", x, *row[1], row[2][3]);
    b[0] = 'a'; b[1] = 'b'; b[2] = 0; printf("%d %d ", length(b), length("hello")); printf("%d %s\n", shout(b), b);
    p = malloc(40); p[9] = 8; printf("%d %d\n", p[0], p[9]); t = malloc(4); t[0] = 'm'; printf("%s\n", t);
    p = 0; printf("%d %d\n", p == 0, !p);
  }
  return 0;
}
// turns: 3
