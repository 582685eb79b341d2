#define U unsigned long
long after_u = 3;
int f(int x) { return x + 1; }
#define L long
L long wide = 5;
U long also = 6;
#define T true
#if T
#define SEEN 1
#endif
#if true
int kept;
#endif
#if 0
/* a comment in front */ cin 'x
/* over
two lines */ # /* and here */ if 1
#endif
#endif
struct Bits { int one : true; int two : 2; };
int main() {
  struct Bits b;
  b.one = 1;
  printf("%d %d %d %d\n", f(1), wide, sizeof(wide), sizeof(also));
  printf("%d %d %d %d\n", sizeof(long long), sizeof(unsigned long long int), SEEN, sizeof(b));
  return 0;
}
