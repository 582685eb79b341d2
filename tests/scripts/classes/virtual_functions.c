class Shape { public: int w; virtual int area(void) = 0; virtual int name(void) { return 1; } };
class Rect : public Shape { public: int h; int area(void) { return w * h; } int name(void) { return 2; } };
class Box : public Rect { public: virtual int name(void) { return 3; } };
Shape *any;
int main()
{
  Rect r; Box b; Rect *p;
  r.w = 3; r.h = 4; b.w = 5; b.h = 6;
  printf("%d %d %d %d", r.area(), r.name(), b.area(), b.name());
  p = &r; printf("%d %d", p->area(), p->name());
  printf("%d %d", sizeof(Shape), sizeof(Box));
  return 0;
}
