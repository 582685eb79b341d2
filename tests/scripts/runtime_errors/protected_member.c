class Base { protected: int kept; public: int set(void) { kept = 4; return kept; } };
class Derived : public Base { public: int read(void) { return kept + 1; } };
class Derived d;
int main()
{
  d.set(); printf("%d\n", d.read());
  printf("%d\n", d.kept);
  return 0;
}
