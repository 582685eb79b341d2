int x = 5; int *p = &x; int **pp = &p; int a[3] = {1, 2, 3}; int *pa = a; int *pe = &a[1];
char *s = "abc"; char **ps = &s; int *tab[2] = {&x, a}; void *vp = &x;
int f(int n) { return n + 1; }
int (*fp)(int) = f; int (*fps[2])(int) = {f, f}; int (*fq)(int) = &f;
struct S { int a; int *p; int (*g)(int); } st = {1, &x, f}; struct S *sp = &st; struct S list[] = {{2, &x, f}, {3, a, f}};
int main()
{
  static int *sl = &x; int *l = &x; struct S *lp = &list[1];
  printf("%d %d %d %d %s", *p, **pp, pa[2], *pe, *ps);
  printf("%d %d %d", fp(1), fps[1](5), fq(6));
  printf("%d %d %d", *tab[0], tab[1][1], *st.p);
  printf("%d %d %d", sp->a, sp->g(8), *sp->p);
  printf("%d %d %d", list[1].a, list[0].g(1), lp->a);
  *p = 9; printf("%d %d %d %d", x, *sl, *l, *list[0].p);
  return 0;
}
