class C { private: int secret; int hidden(void) { return secret; } public: int open(void) { return hidden() + 1; } friend int helper(int n); };
class C c;
int helper(int n) { c.secret = n; return c.secret + c.hidden(); }
int main()
{
  printf("%d %d\n", helper(4), c.open());
  printf("%d\n", c.hidden());
  return 0;
}
