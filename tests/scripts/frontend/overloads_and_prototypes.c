int f(int a) { return 1; }
int f(int a, int b) { return 2; }
int f(int a, int b, int c) { return 3; }
int f(void) { return 0; }
int open(int a, ...) { return 7; }
void named(int); void named(int a) { printf("named %d", a); }
int unnamed(int, char *);
int unnamed(int n, char *s) { printf("%d%s", n, s); return 0; }
int later(int a, int b);
int twice(int a) { return later(a, a); }
int later(int a, int b) { return a + b; }
function typeless(a, b) { return a * b; }
function none() { return 5; }
subroutine show(a) { printf("shown %d", a); }
function mixed($a, int b, char *c) { printf("%s %d %s", $a, b, c); return $a; }
int main(void)
{
  printf("%d %d %d %d", f(), f(1), f(1, 2), f(1, 2, 3));
  printf("%d %d %d", open(1), open(1, 2), open(1, 2, 3));
  named(4); unnamed(1, "x");
  printf("%d", twice(4));
  printf("%d %d", typeless(3, 4), none());
  show(6);
  printf("%s", mixed("m", 2, "z"));
  return 0;
}
