class B { public: int n; int f(void) { return 1; } };
int main()
{
  B b;
  printf("%d\n", b.f());
  b.n();
  printf("never\n");
  return 0;
}
