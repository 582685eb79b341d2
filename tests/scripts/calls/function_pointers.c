int add(int a, int b) { return a + b; }
int sub(int a, int b) { return a - b; }
int two(void) { return 2; }
function join($a, $b) { return $a + $b; }
struct Tool { int (*run)(int, int); int left; };
struct Tool tool; struct Tool *hand; struct Tool box[2];
int (*table[3])(int, int);
int (*current)(int, int);
int apply(int (*f)(int, int), int a, int b) { return f(a, b); }
int twice(int (*f)(int, int), int a) { return apply(f, a, apply(f, a, a)); }
int main()
{
  int z; int (*f)(int, int); int (*g)(void); int i;
  for (z = 0; z < 2; z++) {
    f = add; current = sub; g = two;
    printf("%d %d %d %d\n", f(5, 3), current(5, 3), (*f)(5, 3), g());
    table[0] = add; table[1] = sub; table[2] = f;
    for (i = 0; i < 3; i++) printf("%d\n", table[i](10, i));
    printf("%d %d %d\n", apply(sub, 9, 4), apply(f, 9, 4), twice(add, 3));
    tool.run = sub; tool.left = 20; hand = &tool; box[1].run = add;
    printf("%d %d %d\n", tool.run(tool.left, 1), hand->run(7, 7), box[1].run(1, 1));
    f = join; printf("%s\n", f("a", "b"));
    f = table[z]; printf("%d\n", f(8, 3));
    printf("%d\n", f(f(1, 2), f(3, 4)));
  }
  return 0;
}
