int main()
{
  char c; UCHAR u; short s; INT64 w; float f; INT8 t;
  c = 0 - 1; u = 200; s = 0 - 2; t = 0 - 3;
  printf("%d %d %d %d\n", c, u, s, t);
  if (c < 0) printf("never\n");
  c += 1;
  printf("%d\n", c);
  c = 200; c /= 2;
  printf("%d\n", c);
  u = 200; u /= 2;
  printf("%d\n", u);
  s = 0 - 2; s += 1;
  printf("%d\n", s);
  w = 1; w *= 3000000000;
  f = 0.1;
  printf("%.3f %d\n", f, f == 0.1);
  f = 0.5;
  printf("%d\n", f == 0.5);
  return 0;
}
