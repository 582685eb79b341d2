class C { public: int v; int get(void) { return v; } };
class C c; class C *p;
int main()
{
  p = &c; c.v = 5; printf("%d\n", p->get());
  p = 0;
  printf("%d\n", p->get());
  return 0;
}
