class B { protected: int inner; public: int set(void) { inner = 3; return inner; } };
class D : public B { public: int get(void) { return inner + 1; } };
int main()
{
  D d;
  printf("%d %d\n", d.set(), d.get());
  printf("%d\n", d.inner);
  printf("never\n");
  return 0;
}
