class C {
  int v;
public:
  int k;
  C(); ~C();
  int get(void); void set(void); int add(int n, int o, int p, int q, int r, int s); char *name(void); double half(void);
  static int count;
  C *self(void);
  int get(int a);
};
C::C() { v = 1; printf("never run"); }
C::~C() { v = 0; }
int C::get(void) { return v; }
void C::set(void) { v = 42; this->k = 7; }
int C::add(int n, int o, int p, int q, int r, int s) { int t; t = v; { int u; u = t + 1; t = u; } return t; }
char *C::name(void) { return "C!"; }
double C::half(void) { return v / 2.0; }
struct S { int a; int twice(void); int size(void); };
int S::twice(void) { return a * 2; }
int S::size(void) { return sizeof(*this); }
C global;
int main()
{
  C c; C *p; S s; int k; int sum; int kept[40];
  for (k = 0; k < 40; k++) kept[k] = 1;
  c.set(); printf("%d %d", c.get(), c.k);
  printf("%d %s %g", c.add(3, 4, 5, 6, 7, 8), c.name(), c.half());
  sum = 0; for (k = 0; k < 40; k++) sum += kept[k];
  p = &global; p->set(); printf("%d %d", p->get(), global.k);
  s.a = 21; printf("%d %d %d", s.twice(), s.size(), sum);
  return 0;
}
