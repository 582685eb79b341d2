int odd(int n);
int even(int n) { if (n == 0) return 1; return odd(n - 1); }
int odd(int n) { if (n == 0) return 0; return even(n - 1); }
int later(void);
int main()
{
  printf("%d %d\n", even(10), even(7));
  printf("%d\n", later());
  unannounced();
  return 0;
}
int later(void) { return 12; }
int unannounced(void) { printf("without arguments\n"); return 0; }
