int main()
{
  int z; double d; float f; long l; char c; int i;
  l = 5000000000; c = 250; i = 0 - 3;
  for (z = 0; z < 3; z++) {
    d = 2.5; f = 0.1;
    printf("%g %g %g %g\n", d + 1, 1 - d, d * i, i / d);
    printf("%g %g %g\n", d + c, d + l, l * 1.0);
    printf("%d %d %d %d\n", d > 2, 2 > d, d == 2.5, d != 2.5);
    printf("%d %d\n", f == 0.1, f * 10 == 1);
    printf("%g %g %d %d\n", -d, - -d, !d, ~d);
    printf("%d %d %d\n", 0.1 && 1, 0.0 || 0, 0.5 || 0);
    printf("%g %g\n", 7 / 2 * 1.0, 7 / 2.0);
    i = d * 3; printf("%d ", i); c = 300.9; printf("%d ", c); l = 6000000000.7; printf("%lld\n", l);
    d = 3; i = 0 - 3; c = 250; l = 5000000000; printf("%g\n", d / 2);
    d = l; printf("%.0f ", d); f = 16777217; printf("%.0f\n", f);
  }
  return 0;
}
// turns: 3
