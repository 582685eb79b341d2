#define A 1
#define A 2
#define B 3
#undef B
#define B 4
#undef NEVER
int main()
{
  printf("%d %d", A, B);
#undef A
#ifdef A
  printf("still there");
#endif
#define A "now a text"
  printf("%s", A);
  return 0;
}
