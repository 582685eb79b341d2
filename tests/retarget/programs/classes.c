// answers: 124; 110; 444; 1009; 104; 109; 27; 35
// calls: member(7); implicit(3); narrow(300); built(); pointer(4); main(); inherited(5); overloaded(3)
class Counter {
public:
  int count;
  unsigned int low : 3;
  unsigned int high : 5;
  char name[4];
  int step(int by) { count += by; low = count; return count; }
  int twice(int by) { step(by); return this->count + low; }
  int sum(INT8 a, short b) { return a + b + count; }
  Counter() { count = 100; high = 9; }
  ~Counter() { count = -1; }
};
Counter g_counter;
int member(int a) { Counter c; c.count = a; return c.step(5) * 10 + c.low; }
int implicit(int a) { Counter c; return c.twice(a); }
int narrow(int a) { Counter c; return c.sum(a, a); }
int built() { Counter c; return c.count * 10 + c.high; }
int pointer(int a) { Counter c; Counter *p; p = &c; p->step(a); return p->count; }
int main() { return g_counter.count + g_counter.high; }
class Base { public: int a; int b; int both() { return a + b; } };
class Derived : public Base { public: int c; int all() { return both() + c; } };
int inherited(int n) { Derived d; d.a = n; d.b = 2; d.c = 20; return d.all(); }
int shape(int a) { return a * 2; }
int shape(int a, int b) { return a * 10 + b - 1; }
int overloaded(int n) { return shape(n) - 1 + shape(n, 1); }
