#define M 7
enum { A = 3, B };
int e1 = 1 + 2 * 3; int e2 = (1 << 4) | 3; int e3 = ~0; int e4 = !5; int e5 = 5 > 3; int e6 = 'a' + 1;
int e7 = sizeof(int) * 2; int e8 = 1 ? 10 : 20; int e9 = -(3 + 4); int f1 = 17 % 5; int f2 = 7 / 2;
int f3 = 0 ? 10 : 20; int f4 = +5; int f5 = 5 && 0; int f6 = 5 || 0; int f7 = 3 ^ 1; int f8 = 100 >> 2;
int f9 = 0xFF & 0x0F; int g1 = A + B * M; int g2 = (int)65; int g3 = 1 + 2 == 3; int g4 = -M;
double d1 = 1.5 * 2; double d2 = 1.0 / 4 + 1; double d3 = -(2.5 - 1); double d4 = 1 / 2; double d5 = M;
struct S { int x; double y; }; int g5 = sizeof(struct S); int g6 = sizeof(char *) + sizeof(long);
int main()
{
  printf("%d %d %d %d %d %d", e1, e2, e3, e4, e5, e6);
  printf("%d %d %d %d %d", e7, e8, e9, f1, f2);
  printf("%d %d %d %d %d %d", f3, f4, f5, f6, f7, f8);
  printf("%d %d %d %d %d", f9, g1, g2, g3, g4);
  printf("%g %g %g %g %g", d1, d2, d3, d4, d5);
  printf("%d %d", g5, g6);
  return 0;
}
