class Outer {
public:
  struct In { int a; int b; };
  In i; struct In j;
  union { int u; char c[4]; } z;
  enum Q { QA, QB };
};
class P { public: int v; int get(void) { return v; } void inc(void) { v = v + 1; } };
class H { public: P ps[3]; P *pp; int n; P one; int first(void) { return n; } };
int main()
{
  Outer o; H h; P p; H *q;
  o.i.a = 1; o.j.b = 2; o.z.u = 66;
  printf("%d %d %d %d", o.i.a, o.j.b, o.z.c[0], sizeof(Outer));
  h.ps[1].v = 5; p.v = 8; h.pp = &p; h.one.v = 9; h.n = 3;
  printf("%d %d %d %d", h.ps[1].v, h.pp->v, h.one.v, sizeof(H));
  h.one.inc(); h.pp->inc(); h.ps[1].inc();
  printf("%d %d %d %d", h.one.get(), h.pp->get(), h.ps[1].get(), h.first());
  q = &h; printf("%d %d", q->one.get(), q->first());
  return 0;
}
