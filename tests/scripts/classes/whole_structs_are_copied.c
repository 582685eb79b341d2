struct In { int v[2]; };
struct S { int a; char b[3]; double d; struct In in; };
struct S g; struct S many[3];
union U { int i; char c[4]; };
int main()
{
  struct S x; struct S y; struct S *p; union U u; union U w;
  x.a = 5; x.b[1] = 'q'; x.d = 2.5; x.in.v[1] = 6;
  y = x; x.a = 9; x.in.v[1] = 7;
  printf("%d %d %g %d", y.a, y.b[1], y.d, y.in.v[1]);
  g = y; printf("%d %g", g.a, g.d);
  p = &y; x = *p; printf("%d", x.a);
  x.a = 12; *p = x; printf("%d", y.a);
  many[1] = y; many[2] = many[1]; many[1].a = 1; printf("%d %d", many[1].a, many[2].a);
  y.in = many[1].in; y.in.v[0] = 3; printf("%d %d", y.in.v[0], y.in.v[1]);
  u.i = 65; w = u; printf("%d %d", w.i, w.c[0]);
  return 0;
}
