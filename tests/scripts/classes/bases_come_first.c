struct A { int a; char n[3]; };
struct B : A { int b; };
struct C { double c; };
struct D : B, C { int d; int sum(void) { return a + b + d; } };
class E : public D { public: int e; int all(void) { return a + b + d + e; } };
struct X { int v; int w; };
struct Y : X { int v; int both(void) { return v + w; } };
struct D gd; struct D arr[2];
int main()
{
  struct D *p; E e; struct Y y;
  gd.a = 1; gd.b = 2; gd.c = 2.5; gd.d = 3; gd.n[2] = 'z'; p = &gd;
  printf("%d %d %g %d %d %d", p->a, p->b, p->c, p->d, p->n[2], p->sum());
  arr[1].a = 7; arr[1].c = 0.5; arr[0].d = 9;
  printf("%d %g %d", arr[1].a, arr[1].c, arr[0].d);
  e.a = 10; e.b = 20; e.d = 30; e.e = 40; printf("%d %d", e.all(), e.sum());
  y.w = 8; y.v = 5; printf("%d %d %d", y.v, y.w, y.both());
  printf("%d %d %d %d %d", sizeof(struct A), sizeof(struct B), sizeof(struct D), sizeof(E), sizeof(struct Y));
  printf("%d", sizeof(arr));
  return 0;
}
