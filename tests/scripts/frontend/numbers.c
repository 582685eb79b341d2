int main()
{
  double d; int m[3][5];
  printf("%d %d %d %d", 0, 007, 017, 123456789);
  printf("%d %d %d %d", 10L, 10l, 10U, 10u);
  printf("%d %d %d %d", 0xFF, 0xff, 0x10L, 0xABCu);
  printf("%d %d", 2147483647, 0x7fffffff);
  d = .5; printf("%g", d);
  d = 1.5f; printf("%g", d);
  d = 100.25F; printf("%g", d);
  printf("%d %d %d %d %d", sizeof(5000000000), sizeof(5), sizeof(m), sizeof(m[1]), sizeof(m[1][2]));
  printf("%g %g %g", 2.5, -.25, 3.0);
  return 0;
}
