// A postfix step runs when the rest of its expression is done; a step by itself gives the new value.
int g;
function give(n) { return n; }
int main()
{
  int z; int x; int y; double d; long l; short s; char *p;
  for (z = 0; z < 3; z++) {
    y = 5; x = y++; printf("%d %d ", x, y); x = y--; printf("%d %d ", x, y); x = ++y; printf("%d %d ", x, y); x = --y; printf("%d %d\n", x, y);
    y = 5; printf("%d ", y++); printf("%d ", y--); printf("%d ", (y++)); printf("%d\n", y++ + 0);
    y = 5; printf("%d %d %d\n", give(y++), y, give(++y));
    y = 3; x = -y++; printf("%d %d ", x, y); x = !y++; printf("%d %d ", x, y); x = y++ * 2 + ++y; printf("%d %d\n", x, y);
    d = 0.5; d++; ++d; x = d--; printf("%g %d\n", d, x);
    l = 4294967295; l++; printf("%lld ", l); s = 65535; s++; printf("%d ", s); s--; printf("%d\n", s);
    g = 2147483647; g++; printf("%d\n", g);
    y = 2; if (y-- == 2) printf("was two, is %d\n", y);
    while (y-- > 0) printf("turn %d\n", y);
    p = "abc"; p++; printf("%s\n", p);
  }
  return 0;
}
// turns: 3
