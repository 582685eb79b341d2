#define P(x) printf("%d", x)
#define SWAP(a, b) { int t; t = a; a = b; b = t; }
#define FOR(i, n) for (i = 0; i < n; i++)
#define SET(T, n, v) T n; n = v
#define STEP(x) x = x + 1
#define CALL(f) f()
#define CASE(n) case n: printf("case %d", n); break;
#define FIELD(s, f) s.f
#define ARROW(p, f) p->f
#define DECL(T, n) T n
#define DOLLAR(n, v) $n = v
typedef char Byte;
struct S { DECL(int, a); DECL(Byte, b); };
DECL(int, glob) = 5;
DECL(int, arr)[3] = {1, 2, 3};
int hi() { printf("hi"); return 3; }
int main()
{
  int x; int y; DECL(struct S, s); struct S *p;
  x = 1; y = 2;
  P(1); P(2);
  SWAP(x, y) SWAP(y, x) SWAP(x, y)
  printf("%d %d", x, y);
  FOR(x, 2) FOR(y, 2) printf("%d%d", x, y);
  SET(Byte, c, 65); SET(int, d, 66); printf("%d %d", c, d);
  STEP(x); STEP(x); STEP(x); P(x);
  CALL(hi); P(CALL(hi));
  switch (glob) { CASE(4) CASE(5) default: printf("none"); }
  FIELD(s, a) = 7; p = &s; ARROW(p, b) = FIELD(s, a) + 1; P(ARROW(p, a) + FIELD(s, b));
  DOLLAR(q, 9); DOLLAR(q, $q + arr[2]); P($q);
  if (x) P(3); else P(4);
  do P(5); while (0);
  return 0;
}
