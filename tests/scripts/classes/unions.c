union U { int i; char c; short s; double d; char b[6]; };
union U g;
typedef union { int a; unsigned char b[4]; } V;
struct T { int kind; union { int i; double d; char *s; } v; struct T *l; };
union Deep { struct { char lo; char hi; } half; short both; };
union Sized { char a[3]; struct { int x; int y; } p; union { char z[9]; } q; };
int main()
{
  union U u; V v; union U *p; struct T a; struct T b; union Deep d;
  u.i = 0; u.c = 65; printf("%d %d", u.i, sizeof(union U));
  u.s = 258; printf("%d %d %d", u.b[0], u.b[1], u.c);
  v.a = 0x01020304; printf("%d %d %d %d", v.b[0], v.b[1], v.b[2], v.b[3]);
  v.b[3] = 0; printf("%d", v.a);
  g.d = 1.5; printf("%g", g.d); p = &g; p->i = 7; printf("%d", g.i);
  a.kind = 1; a.v.i = 5; b.v.d = 2.5; a.l = &b; b.l = 0;
  printf("%d %g", a.v.i, a.l->v.d);
  b.v.s = "text"; printf("%s", a.l->v.s);
  d.both = 0x0102; printf("%d %d", d.half.lo, d.half.hi);
  printf("%d %d", sizeof(struct T), sizeof(union Sized));
  return 0;
}
