#define N 3
#define EMPTY
#define NAME N
#define SQ(x) ((x) * (x))
#define PAIR(a, b) a + b
#define F (2)
#if defined(N)
int d = 1;
#else
int d = 2;
#endif
#if N > 5
int e = 1;
#else
int e = 2;
#endif
#if EMPTY
int g = 1;
#elif N
int g = 2;
#else
int g = 3;
#endif
#if NAME
int h = 1;
#else
int h = 2;
#endif
#if 0
#if 1
int skipped = undefined;
#else
int skipped = undefined;
#endif
#elif MISSING
int k = 1;
#else
int k = 2;
#endif
int main()
{
  printf("%d %d %d %d %d\n", d, e, g, h, k);
  printf("%d %d %d\n", SQ(N + 1), PAIR(1, (2 + 3)) * 2, F);
  printf("%d\n", SQ(SQ(2)));
#undef N
#ifdef N
  printf("defined\n");
#else
  printf("not defined\n");
#endif
#ifndef N
  printf("really not\n");
#endif
  return 0;
}
