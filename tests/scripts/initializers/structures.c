struct In { int x; char y; };
struct S { int a; struct In in; char *t; double d; int v[3]; char s[4]; };
struct S g = {1, {2, 'c'}, "txt", 2.5, {7, 8, 9}, "abc"};
struct S part = {1, {2}, };
struct In arr[2] = {{1, 'a'}, {2, 'b'}}; struct In open[] = {{1, 'a'}, {2, 'b'}, {3}};
union U { int i; char c; } u = {65};
typedef struct { int p; int q; } PT;
PT pt = {3, 4}; PT pts[2] = {{1, 2}, {3, 4}}; PT none = {};
struct { int k; char *n; } tab[] = {{1, "one"}, {2, "two"}, {0, 0}};
class K { public: int z; int w; }; K kk = {1, 2};
struct Neg { char c; long l; float f; short s; } neg = {-1, -5000000000, -1.5, -2};
struct Row { int id; struct In cells[2]; } rows[2] = {{1, {{11, 'a'}, {12, 'b'}}}, {2, {{21, 'c'}, {22, 'd'}}}};
struct A { int a; }; struct B { char b; short c; }; struct D : A, B { int d; };
struct D whole = {1, 2, 3, 4}; struct D begun = {5, 6}; struct D both[2] = {{1, 2, 3, 4}, {5, 6, 7, 8}};
int main()
{
  struct In l = {5, 'c'}; struct In ls[2] = {{6, 'd'}, {7, 'e'}}; PT lp = {8, 9};
  printf("%d %d %c %s %g %d %d %d %s", g.a, g.in.x, g.in.y, g.t, g.d, g.v[0], g.v[1], g.v[2], g.s);
  printf("%d %d %d %d %g %d %d", part.a, part.in.x, part.in.y, part.t == 0, part.d, part.v[2], part.s[0]);
  printf("%d %c %d %c %d %d %d", arr[0].x, arr[0].y, arr[1].x, arr[1].y, sizeof(open), open[2].x, open[2].y);
  printf("%d %d|%d %d %d %d|%d", u.i, u.c, pt.p, pt.q, pts[1].p, pts[1].q, none.q);
  printf("%d %s %d %s %d %d", tab[0].k, tab[0].n, tab[1].k, tab[1].n, tab[2].n == 0, sizeof(tab));
  printf("%d %d|%lld %g %d", kk.z, kk.w, neg.l, neg.f, neg.c == 255);
  printf("%d %d %c %d %c", rows[0].id, rows[0].cells[1].x, rows[0].cells[1].y, rows[1].cells[0].x, rows[1].cells[1].y);
  printf("%d %c %d %c %d %d", l.x, l.y, ls[1].x, ls[1].y, lp.p, lp.q);
  printf("%d %d %d %d|%d %d %d %d|%d %d", whole.a, whole.b, whole.c, whole.d, begun.a, begun.b, begun.c, begun.d, both[1].a, both[1].d);
  return 0;
}
