int a[3] = {1, 20, 300}; int b[] = {4, 5, 6, 7,}; char c[3] = {'a', 'b', 'c'};
char s[] = "hello"; char s10[10] = "abc"; char s4[4] = "abc";
char *names[] = {"one", "two", "three"}; char *part[3] = {"x", "y"};
double d[2] = {1.5, -2.5}; float f[3] = {0.5, 1, -1}; long l[2] = {5000000000, -1}; short sh[3] = {1, 2};
unsigned char uc[] = {255, 128, 0}; int none[4] = {}; int rest[5] = {1}; int neg[2] = {-1, -2147483647};
int hx[] = {0x10, 0xFF}; bool bo[2] = {true, false};
int ex[] = {1 + 1, 2 * 3, (4), sizeof(int), 'z', -(5), ~0, !0, 1 << 3};
int lines[] = {
  1, // one
  2, /* two */
#define THREE 3
  THREE,
#undef THREE
};
int main()
{
  printf("%d %d %d|%d %d|%d %d %d", a[0], a[1], a[2], b[0], b[3], c[0], c[1], c[2]);
  printf("%s %s %s %d %d", s, s10, s4, s10[3], s10[9]);
  printf("%d %d %d %d %d", sizeof(b), sizeof(s), sizeof(s10), sizeof(names), sizeof(lines));
  printf("%s %s %s|%s %s %d", names[0], names[1], names[2], part[0], part[1], part[2] == 0);
  printf("%g %g|%g %g %g", d[0], d[1], f[0], f[1], f[2]);
  printf("%lld %lld|%d %d %d", l[0], l[1], sh[0], sh[1], sh[2]);
  printf("%d %d %d|%d %d|%d %d %d", uc[0], uc[1], uc[2], none[0], none[3], rest[0], rest[1], rest[4]);
  printf("%d %d|%d %d|%d %d", neg[0], neg[1], hx[0], hx[1], bo[0], bo[1]);
  printf("%d %d %d %d %d %d %d %d %d", ex[0], ex[1], ex[2], ex[3], ex[4], ex[5], ex[6], ex[7], ex[8]);
  printf("%d %d %d", lines[0], lines[1], lines[2]);
  return 0;
}
