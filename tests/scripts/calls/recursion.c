int factorial(int n) { if (n < 2) return 1; return n * factorial(n - 1); }
int ackermann(int m, int n)
{
  if (m == 0) return n + 1;
  if (n == 0) return ackermann(m - 1, 1);
  return ackermann(m - 1, ackermann(m, n - 1));
}
int three(int a, int b, int c) { return a * 100 + b * 10 + c; }
double power(double x, int n) { if (n == 0) return 1; return x * power(x, n - 1); }
int hanoi(int n, int from, int to, int by)
{
  if (n == 0) return 0;
  return hanoi(n - 1, from, by, to) + 1 + hanoi(n - 1, by, to, from);
}
int gcd(int a, int b) { if (b == 0) return a; return gcd(b, a % b); }
int digits(int n) { int d; d = n % 10; if (n > 9) digits(n / 10); printf("%d\n", d); return d; }
int deep(int n) { char room[90]; room[0] = n; if (n == 0) return 0; return 1 + deep(n - 1); }
int main()
{
  printf("%d %d\n", factorial(10), factorial(13));
  printf("%d %d\n", ackermann(2, 3), ackermann(1, ackermann(1, 2)));
  printf("%d\n", three(three(0, 0, 1), three(0, 0, factorial(2)), gcd(9, three(0, 0, 3))));
  printf("%g %d %d\n", power(1.5, 3), hanoi(5, 1, 3, 2), gcd(1071, 462));
  digits(407);
  printf("%d\n", deep(600));
  return 0;
}
