int id(int n) { return n; }
int main()
{
  int z; unsigned int u; unsigned char c; unsigned short s; int i; double d;
  for (z = 0; z < 3; z++) {
    u = 0 - 1; c = 0 - 1; s = 0 - 1;
    printf("%d %u %x\n", u, u, u);
    printf("%d %d %d\n", u < 0, u >> 4, u / 2);
    printf("%d %d\n", c, s);
    c += 2; s += 2; u += 2; printf("%d %d %d\n", c, s, u);
    u = 3000000000; printf("%u %d %u\n", u, u, u + 1);
    i = u; printf("%d %d\n", i, id(u));
    d = u * 1.0; printf("%g\n", d);
  }
  return 0;
}
// turns: 3
