int f(void)
{
  static int n = 5; static char *s = "st"; static int a[3] = {1, 2, 3}; static double d = 0.5;
  n = n + 1; a[1] = a[1] + n; d = d * 2;
  printf("%s %d %d %g", s, n, a[1], d);
  return n;
}
int g(int v)
{
  int w[3] = {v, v + 1, v * 2}; int u = w[1]; char t[] = "text"; char *n[] = {"p", "q"}; double d[2] = {1.5, 2};
  t[0] = 'T';
  { int u = v; printf("%d %d %d %d %s %s %g %d", w[0], w[2], u, sizeof(t), t, n[1], d[1], sizeof(n)); }
  return u;
}
int main()
{
  f(); f();
  printf("%d", f());
  printf("%d", g(4)); printf("%d", g(7));
  return 0;
}
