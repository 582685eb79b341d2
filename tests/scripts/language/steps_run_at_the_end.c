int last(void) { int y; y = 5; return y++; }
int main()
{
  int x; int y; char c; double d; float f;
  y = 5;
  x = y++ + y;
  printf("%d %d\n", x, y);
  x = y-- - 1;
  printf("%d %d\n", x, y);
  printf("%d\n", last());
  x = 3;
  x = x++;
  printf("%d\n", x);
  x = ++y * 2;
  printf("%d %d\n", x, y);
  c = 255; c++;
  printf("%d\n", c);
  d = 1.5; d++; ++d; d--;
  printf("%g\n", d);
  $n = 1; $n++; ++$n;
  printf("%d\n", $n);
  $r = 0.25; $r++;
  printf("%g\n", $r);
  return 0;
}
