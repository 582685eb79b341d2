int add(int a, int b) { return a + b; }
int sub(int a, int b) { return a - b; }
void hi(void) { printf("hi"); }
char *name(int n) { return "name"; }
double half(double d) { return d / 2; }
function join($a, $b) { return $a + $b; }
int (*global)(int, int);
int (*given)(int, int) = sub;
int (*table[2])(int a, int b);
int (*full[2])(int, int) = { add, sub };
typedef int (*OP)(int, int);
OP op = add;
void (*v)(void); void (*w)(); char *(*text)(int); double (*real)(double);
struct S { int (*m)(int, int); OP n; char *name; };
struct S one = { add, sub, "one" };
struct S many[] = { { add, add, "a" }, { sub, sub, "b" } };
int apply(int (*f)(int, int), int x, int y) { return f(x, y); }
int twice(int (*f)(int, int), int a) { return apply(f, a, apply(f, a, a)); }
int apply_starred(int (*f)(int, int), int x, int y) { return (*f)(x, y); }
int apply_typed(OP f, int x, int y) { return f(x, y); }
int main()
{
  int x; int (*local)(int, int) = add; OP typed; struct S s; struct S *p;
  global = add; printf("%d %d", global(1, 2), given(5, 2));
  global = &sub; printf("%d %d", global(9, 2), (*global)(9, 3));
  local = global; typed = sub; printf("%d %d %d", local(20, 1), typed(1, 1), op(1, 1));
  table[0] = add; table[1] = sub;
  printf("%d %d %d %d", table[0](1, 2), table[1](1, 2), (*table[0])(3, 4), full[1](5, 3));
  s.m = add; s.n = sub; p = &one;
  printf("%d %d %d %d", s.m(1, 2), s.n(4, 1), p->m(5, 6), one.n(9, 8));
  printf("%d %s %d", many[1].m(5, 6), many[1].name, many[0].n(1, 1));
  printf("%d %d %d %d", apply(add, 3, 4), apply(sub, 3, 4), apply_starred(sub, 5, 6), apply_typed(add, 5, 6));
  v = hi; v(); w = hi; (*w)();
  text = name; real = half; printf("%s %g", text(1), real(3));
  printf("%d %d %d %d", sizeof(global), sizeof(OP), sizeof(table), sizeof(struct S));
  printf("%d", local(1, 2) * 2 + global(3, 4));
  printf("%d %d", twice(add, 3), op(op(1, 2), op(3, 4)));
  for (x = 0; x < 2; x++) { local = table[x]; printf("%d %d", local(8, 3), table[x](10, x)); }
  local = join; printf("%s", local("a", "b"));
  return 0;
}
