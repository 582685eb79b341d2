class P {
  int a; int d;
  void hidden(void) { d = 6; }
public:
  int b;
  int geta(void) { return a; }
  void seta(void) { a = 5; hidden(); }
protected:
  int c;
private:
  int z;
public:
  int e;
  int getd(void) { return d; }
};
class Q : public P { public: int f; int getc(void) { return c; } void setc(void) { c = 8; } };
struct S { int open; private: int shut; public: void fill(void) { shut = 9; } int get(void) { return shut; } };
class F { int secret; public: friend int peek(F *f); void init(void) { secret = 99; } };
int peek(F *f) { return f->secret; }
int main()
{
  P p; Q q; S s; F f;
  p.seta(); p.b = 1; p.e = 2;
  printf("%d %d %d %d", p.geta(), p.b, p.e, p.getd());
  q.setc(); q.b = 3; q.f = 4;
  printf("%d %d %d", q.getc(), q.b, q.f);
  s.open = 7; s.fill(); printf("%d %d", s.open, s.get());
  f.init(); printf("%d", peek(&f));
  printf("%d %d %d", sizeof(P), sizeof(Q), sizeof(S));
  return 0;
}
