class C { public: int a; }; struct S { int b; }; union U { int c; };
class C c1; C c2; struct S s1, *s2, s3[2]; S s4; U u1;
struct { int q; } nameless; class K { public: int z; } k1, *k2;
struct N; struct N *head; struct N { int v; struct N *next; };
int x = 1; typedef int T; int f() { return 2; }
struct Same { int x; int T; int f; int Same; char *main; };
int use(C *c, S *s, class C *d, const struct S *e) { return c->a + s->b + d->a + e->b; }
S *pick(int n) { return &s1; }
int main()
{
  class C l1; C l2; struct Same m; struct N a; struct N b; struct Local { char l; } loc; struct N *p;
  c1.a = 1; c2.a = 2; s1.b = 3; s4.b = 4; u1.c = 5; l1.a = 6; l2.a = 7; loc.l = 8;
  s2 = &s1; s3[1].b = 9; nameless.q = 10; k1.z = 11; k2 = &k1;
  printf("%d %d %d %d %d %d %d %d", c1.a, c2.a, s2->b, s4.b, u1.c, l1.a, l2.a, loc.l);
  printf("%d %d %d %d", s3[1].b, nameless.q, k2->z, use(&c1, &s1, &l2, &s4));
  m.x = 5; m.T = 6; m.f = 7; m.Same = 8; m.main = "m";
  printf("%d %d %d %d %s %d", m.x, m.T, m.f, m.Same, m.main, x);
  a.v = 1; b.v = 2; a.next = &b; b.next = 0; head = &a;
  for (p = head; p != 0; p = p->next) printf("%d", p->v);
  { struct Local { double d; double e; }; struct Local q; q.e = 1.5; printf("%d %g", sizeof(q), q.e); }
  return 0;
}
