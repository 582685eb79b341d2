// A member function works on its object; arguments never reach it, its parameters read 0.
class Counter {
  private: int value;
  public: int step; double scale; int log[3];
  int next(void) { value = value + step; return value; }
  int add(int n) { value = value + n + 1; return value; }
  int both() { next(); return this->value * 10 + step; }
  char *name(void) { return "counter"; }
  double scaled(void) { return value * scale; }
  void note(void) { log[1] = value; log[2] = log[1] * 2; }
  int locals(int n) { int a; a = step; a += 5; return a; }
};
class Counter c; class Counter d; class Counter *p; class Counter many[3];
int main()
{
  int z;
  for (z = 0; z < 2; z++) {
    c.step = 2; d.step = 100;
    printf("%d %d %d\n", c.next(), c.next(), d.next());
    printf("%d %d\n", c.add(50), c.both());
    c.scale = 0.5; printf("%s %g\n", c.name(), c.scaled());
    c.note(); printf("%d %d %d\n", c.log[0], c.log[1], c.log[2]);
    p = &d; p->step = 1; printf("%d %d\n", p->next(), p->locals(3));
    many[1].step = 3; many[1].next(); p = &many[1]; printf("%d %d %d\n", p->next(), many[1].step, many[0].next());
    printf("%d\n", c.next() + d.next() * 1000);
  }
  return 0;
}
