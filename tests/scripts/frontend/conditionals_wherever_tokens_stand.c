#define ON 1
struct S {
#if ON
  int a;
#else
  int b;
#endif
#ifdef OFF
  int c;
#endif
  int d;
};
enum E {
  E0,
#if ON
  E1,
#else
  EX, EY,
#endif
  E2
};
int t[] = {
  1,
#if ON
  2,
#else
  98, 99,
#endif
  3
};
int f(int a
#if ON
  , int b
#endif
  )
{
  return a - b;
}
int main()
{
  int x;
  struct S s;
  s.a = 1;
  printf("%d %d", s.a, sizeof(struct S));
  printf("%d %d", E1, E2);
  printf("%d %d %d", t[1], t[2], sizeof(t));
  printf("%d", f(5, 2));
  switch (2) {
#if ON
    case 2: printf("two"); break;
#else
    case 2: printf("other"); break;
#endif
  }
  if (1)
#if ON
  { printf("then"); }
#else
  { printf("other"); }
#endif
  else { printf("else"); }
  {
#ifdef ON
    int y; y = 4; printf("%d", y);
#endif
  }
  x = 1 +
#if ON
    2
#else
    3
#endif
    ;
  printf("%d %d", x,
#if ON
    4
#else
    5
#endif
  );
  return 0;
}
