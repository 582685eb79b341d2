int main()
{
  double d; double inf; char *p;
  d = 2.75;
  printf("%g %g\n", -d, - -d);
  printf("%d %d\n", ~d, ~(0 - d));
  printf("%d %d %d\n", !d, !0.0, !(d - d));
  inf = 1.0; inf /= 0.0;
  d = inf - inf;
  printf("%d %d %d %d\n", d == d, d != d, d < 0, d >= 0);
  printf("%d %d\n", !d, d && 1);
  p = 0;
  printf("%d\n", !p);
  p = "";
  printf("%d\n", !p);
  printf("%d %d\n", -2147483647 - 1, - (-2147483647 - 1));
  return 0;
}
