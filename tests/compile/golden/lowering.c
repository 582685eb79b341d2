struct P { int x; int b : 3; };
struct P q;
char *s;
void (*fp)(int *v, int n);
void fill(int *v, int n)
{
  v[n] = q.x;
}
double half(void)
{
  return 1.5 + 2.0;
}
int main(int a)
{
  int list[3];
  q.b = 0x2;
  s = "text";
  if (q.x) a = ~a; else a = 1;
  for (;a < 9;) a++;
  switch (q.x & a) { case 1: return 2; }
  switch (a) { case 3: a = q.x && list[a]; }
  fill(list, 4);
  fp(list, a ? 1 : 2);
  return *list;
}
