int g;
#define A 1
#define B(x) \
  x + 1
/* over
   two lines */
struct S { int a;
  char b; };
int main()
{
  int x;
  struct S s;
  x = A +
      B(2);
  printf("%d", x);
#if A
  printf("taken");
#else
  printf("skipped");
#endif
  s.a = 5; // a comment
  printf("%d %d", s.a, sizeof(struct S));
  switch (x) {
    case 4: printf("four");
  }
  return 0;
}
