// calls: twelve(1, -2, 3, -4, 5, -6, 7, -8, 9, -10, 11, -12); narrow(200, 300, 70000, -1, -1); outer(7); deep(10); through(6, 0)
// calls: through(6, 1); small(3); odd(5); large(4); real(3); many_reals(); swapped(1, 2); pointers(5); chars(255, 65535)
// calls: nine_small(2); table(2); result(300); unsigned_result(-1); in_loop(5); even(10); even(7); hanoi(5); tail(3)
struct Pair { int a; int b; };
struct Odd { char c; int i; short s; };
struct Large { INT64 x; INT64 y; int z; };
INT64 twelve(int a, INT64 b, char c, short d, int e, int f, int g, INT64 h, int i, INT8 j, short k, int l) {
  return a + 2 * b + 3 * c + 4 * d + 5 * e + 6 * f + 7 * g + 8 * h + 9 * i + 10 * j + 11 * k + 12 * l;
}
int narrow(char a, unsigned char b, short c, unsigned short d, unsigned char e) { return a + 2 * b + 3 * c + 5 * d + 7 * e; }
int inc(int a) { return a + 1; }
int sum3(int a, int b, int c) { return a * 100 + b * 10 + c; }
int outer(int a) { return sum3(inc(a), sum3(inc(1), a, inc(inc(2))), inc(sum3(0, 0, a))); }
int deep(int n) { return n == 0 ? 0 : n + deep(n - 1); }
int twice(int a) { return a * 2; }
int through(int a, int which) { int (*f)(int); f = which ? twice : inc; return f(f(a)) + (*f)(1); }
int of_pair(struct Pair p, int k) { p.a += k; return p.a * 10 + p.b; }
int small(int a) { struct Pair p; p.a = a; p.b = 4; return of_pair(p, 2) * 100 + p.a; }
int of_odd(int k, struct Odd o, struct Pair p) { o.i++; return o.c + o.i * 10 + o.s * 100 + p.a * 1000 + p.b * 10000 + k; }
int odd(int a) { struct Odd o; struct Pair p; o.c = -a; o.i = 30; o.s = -6; p.a = 2; p.b = 1; return of_odd(1, o, p) + o.i; }
INT64 of_large(struct Large l, struct Large *same) { l.x = 7; l.z++; return l.x + l.y * 10 + l.z * 100 + same->z * 1000; }
int large(int a) { struct Large l; l.x = 1; l.y = 2; l.z = a; return of_large(l, &l) + l.x * 10000; }
double kept(double d, int i, float f) { return i ? d : 0.5; }
int real(int a) { double d; float f; int *p; d = 2.5; f = 1.25; d = kept(d, a, f); p = (int *)&d; return p[1]; }
double tenth(double a, double b, double c, double d, double e, double f, double g, double h, double i, double j) { return j; }
int many_reals() { double d; int *p; d = tenth(1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0, 10.5); p = (int *)&d; return p[1]; }
void exchange(int *a, int *b) { int t; t = *a; *a = *b; *b = t; }
int swapped(int a, int b) { exchange(&a, &b); return a * 10 + b; }
int pointers(int n) { int v[6]; int i; int *p; for (i = 0; i < 6; i++) v[i] = i * i; p = v + n; exchange(p, &v[1]); return v[1] * 100 + *p; }
int chars(unsigned char a, unsigned short b) { char c; short s; c = a; s = b; return narrow(c, c, s, s, a); }
int of_nine(int a, int b, int c, int d, int e, int f, int g, struct Odd o, char h, int i) { return o.i + o.c * 2 + h * 3 + i * 5 + g; }
int nine_small(int a) { struct Odd o; o.c = a; o.i = 7; o.s = 1; return of_nine(1, 2, 3, 4, 5, 6, 7, o, -a, inc(a)); }
int (*g_table[3])(int) = {inc, twice, deep};
int table(int i) { return g_table[i](g_table[1](4)) + g_table[0](1); }
char result(int a) { return a; }
unsigned short unsigned_result(int a) { return a; }
int in_loop(int n) { int i; int s; s = 0; for (i = 0; i < n; i++) s = sum3(s & 3, inc(i), twice(inc(i))); return s; }
int odd_number(int n);
int even(int n) { if (n == 0) return 1; return odd_number(n - 1); }
int odd_number(int n) { if (n == 0) return 0; return even(n - 1); }
int hanoi(int n) { return n == 0 ? 0 : hanoi(n - 1) + 1 + hanoi(n - 1); }
int tail(int n) { int a; a = n; { int a; a = 10; n += a; } return n * 100 + a + result(n); }
