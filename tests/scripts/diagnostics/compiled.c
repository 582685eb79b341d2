// args: -morvquiet -cpu32
struct A { int x; int f(int n) { return n; } private: int own() { return this.x; } int hidden; protected: int kept; };
struct B { int x; };
struct A a; struct A *pa; struct B b;
extern int i; extern int arr[3]; extern unsigned u; extern char c; extern INT64 w; extern int *p; extern char *q; extern void *v;
extern float f; extern double d; extern unsigned char uc; extern unsigned short us;
int one(int n) { return n; }
void assignments(void)
{
  p = i; i = p; p = q; v = p; a = b; i = u; c = i; i = w; i = f; uc = c; us = uc; uc = us; q = arr; p += i; c -= u;
}
void reals(void)
{
  f = 1.5 + 2 * 0.5;
  d = 2.5;
  d = f - 1.0;
  i = 1.5 < 2.0;
  i = 1.5 % 2;
  f = 1 / 0.0;
  i = 1 / 0;
  i = 7 & 0.5;
  i = -f;
}
int names(int n)
{
  goto nowhere;
  nothing(1);
  printf("x");
  one(1, 2);
  arr[3] = 1;
  a->x = 1;
  pa.x = 1;
  a.y = 1;
  i.x = 1;
  a.x(1);
  a.own();
  a.hidden = a.kept;
  a->f(1);
  pa.f(1);
  5++;
  arr = 1;
  i = *n;
  i = *5;
  i = n[1];
  _asm("a", "b");
  _asm(1);
  n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = n = 1;
  return 1;
  n = 2;
}
int switches(int n)
{
  switch (n) { case 1: n = 2; break; n = 3; case 1: n = 4; }
  switch (n) { default: n = 2; break; n = 3; case 7: n = 4; default: n = 5; }
  switch (n) { case 1: n = 2; break; n = 3; }
  { return n; n = 1; }
}
