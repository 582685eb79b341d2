#define ADD(a, b) a + b
#define MUL(a, b) ((a) * (b))
#define SQ(x) ((x) * (x))
#define ID(x) x
#define INC(x) ((x) + 1)
#define NONE() 42
#define MAX(a, b) ((a > b) ? a : b)
#define APPLY(f, x) f(f(x))
#define ALIAS INC
#define A 5
#define B A
#define SHADOW(A) A + 1
#define NO_ARGUMENTS (2)
int f(int a, int b) { return a * 10 + b; }
int main()
{
  printf("%d %d", ADD(1, 2), ADD(1, 2) * 3);
  printf("%d %d", MUL(1 + 2, 3 + 4), MUL(ADD(1, 2), ADD(3, 4)));
  printf("%d %d %d", SQ(SQ(2)), INC(INC(INC(1))), NONE());
  printf("%d %d %d", ID(f(3, 4)), ID((7)), MUL(f(1, 2), f((1), (3))));
  printf("%d %d", MAX(3, 9), MAX(MAX(1, 2), MAX(4, 3)));
  printf("%d %d", APPLY(INC, 5), ALIAS(4));
  printf("%d %d %d %d", ID(A), ID(B), ADD(A, B), ADD(ID(A), ID(B)));
  printf("%d %d %d", SHADOW(2), SHADOW(B), NO_ARGUMENTS);
  printf("%s %d %d %d", ID("a,b(c)"), ID('c'), ID(','), ID(')'));
  return 0;
}
