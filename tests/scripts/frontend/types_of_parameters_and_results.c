int f(INT8 a, UINT8 b, UCHAR c, bool d, char e, short f, short int g, int h, long i, long long j)
{ printf("%d %d %d %d %d %d %d %d %d %d", a, b, c, d, e, f, g, h, i, j); return 1; }
int g(float a, double b, INT16 c, UINT16 d, INT32 e, UINT32 f, INT64 g, UINT64 h, wchar_t i, unsigned j)
{ printf("%g %g %d %d %d %d %d %d %d %d", a, b, c, d, e, f, g, h, i, j); return 1; }
int h(unsigned short a, unsigned char b, unsigned long c, unsigned long long d, const int e, register int f,
      volatile int g, const char *p, char *q, int *r, int s[], char t[5])
{ printf("%d %d %d %d %d %d %d %s %s %d", a, b, c, d, e, f, g, p, q, *r); return 1; }
char *text(void) { return "text"; }
const char *constant() { return "constant"; }
double half(double d) { return d / 2; }
static int hidden() { return 13; }
inline int inlined() { return 14; }
unsigned int u() { return 15; }
bool yes(void) { return true; }
void nothing(void) { printf("nothing"); }
int main(void)
{
  int x; int y[2];
  x = 9;
  f(1, 2, 3, 1, 5, 6, 7, 8, 9, 10);
  g(1.5, 2.5, 3, 4, 5, 6, 7, 8, 9, 10);
  h(1, 2, 3, 4, 5, 6, 7, "p", "q", &x, y, "t");
  nothing();
  u(); yes();
  printf("%s %s %g %d %d", text(), constant(), half(3), hidden(), inlined());
  return 0;
}
