// Reads extend with zeros, compound assignments read with the sign, and an assignment's value is
// what stood on the right.
int main()
{
  int z; char c; UCHAR u; short s; unsigned short us; int x;
  for (z = 0; z < 3; z++) {
    c = 200; printf("%d %d %d\n", c, c + 0, c == 200);
    x = c += 0; printf("%d %d\n", x, c);
    u = 200; x = u += 0; printf("%d %d\n", x, u);
    s = 40000; printf("%d\n", s); x = s += 1; printf("%d %d\n", x, s);
    us = 70000; printf("%d\n", us); us *= 16; printf("%d\n", us);
    c = 0 - 1; printf("%d %d %d\n", c, c < 0, c > 254);
    c >>= 1; printf("%d\n", c);
    c = 255; ++c; printf("%d\n", c); c--; printf("%d\n", c);
    x = (c = 300) + 1; printf("%d %d\n", x, c);
    x = s = c = 65537; printf("%d %d %d\n", x, s, c);
  }
  return 0;
}
// turns: 3
