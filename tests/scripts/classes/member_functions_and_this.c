int g = 10;
int helper(int n) { return n * 2; }
class C {
public:
  int a;
  int get(void) { return this->a; }
  void set(void) { this->a = 9; a = a + 1; }
  int both(void) { set(); return get() + this->get(); }
  int outside(void) { a = helper(g); g = a; return a; }
  int loop(void) { int i; int s; s = 0; for (i = 0; i < 3; i++) { if (i == 1) continue; s = s + a; } return s; }
  char *text(void) { return "text"; }
  double real(void) { return 1.5; }
  bool yes(void) const { return true; }
  inline int inlined() { return 8; }
  int given(int n) { return n + sizeof(this); }
};
C many[3];
int main()
{
  C c; C *p; int i;
  c.set(); printf("%d", c.get());
  p = &c; p->set(); printf("%d", p->get());
  c.a = 3; printf("%d", c.both());
  printf("%d %d %d", c.outside(), g, c.loop());
  printf("%s %g %d", c.text(), c.real(), c.inlined()); helper(7); printf("%d", c.given(5));
  many[0].a = 1; many[1].a = 2; many[2].a = 3;
  p = &many[1]; printf("%d", p->get());
  i = 2; many[i].set(); many[0].set(); printf("%d %d %d", many[0].a, many[1].get(), many[2].get());
  return 0;
}
