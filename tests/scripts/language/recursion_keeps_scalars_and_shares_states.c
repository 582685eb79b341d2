int fact(int n) { if (n < 2) return 1; return n * fact(n - 1); }
int fib(int n) { int a; int b; if (n < 2) return n; a = fib(n - 1); b = fib(n - 2); return a + b; }
int ack(int m, int n)
{
  if (m == 0) return n + 1;
  if (n == 0) return ack(m - 1, 1);
  return ack(m - 1, ack(m, n - 1));
}
int gcd(int a, int b) { if (b == 0) return a; return gcd(b, a % b); }
double power(double x, int n) { if (n == 0) return 1; return x * power(x, n - 1); }
char *stars(int n) { if (n == 0) return ""; return stars(n - 1) + "*"; }
int is_odd(int n) { if (n == 0) return 0; return 1 - is_odd(n - 1); }
int main()
{
  printf("%d %d %d %d\n", fact(10), fib(15), ack(2, 3), gcd(1071, 462));
  printf("%g\n", power(1.5, 3));
  printf("[%s]\n", stars(5));
  printf("%d %d\n", is_odd(7), is_odd(500));
  return 0;
}
