// A script finds a member function by the class that the variable or pointer was declared with.
int arg;
class Shape {
  int hidden;
protected:
  int w;
public:
  char *name;
  Shape() { printf("constructors don't run\n"); }
  ~Shape() { printf("destructors don't run\n"); }
  int resize() { w = arg; hidden = arg + 1; return w; }
  virtual int area() { return 0; }
  int reach() { return hidden; }
  int given(int k) { return k; }
  void show() { printf("%s %d\n", name, area()); }
};
class Square : public Shape { public: int area(); int side() { return w; } };
int Square::area() { return w * w; }
Square made;
int main()
{
  Square q; Shape *p;
  arg = 4;
  q.name = "square";
  printf("%d %d %d %d\n", q.resize(), q.area(), q.reach(), q.side());
  q.show();
  p = &q;
  printf("%d %s\n", p->area(), p->name);
  printf("%d\n", made.area());
  return 0;
}
