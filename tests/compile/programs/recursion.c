// calls: factorial(10); fib(15); ackermann(2, 3); power(2, 10); even(10); even(7); hanoi(6)
// modes: -cpu32; -addr32
int odd(int n);
int even(int n) { if (n == 0) return 1; return odd(n - 1); }
int odd(int n) { if (n == 0) return 0; return even(n - 1); }
int factorial(int n) { if (n < 2) return 1; return n * factorial(n - 1); }
int fib(int n) { if (n < 2) return n; return fib(n - 1) + fib(n - 2); }
int ackermann(int m, int n) { if (m == 0) return n + 1; if (n == 0) return ackermann(m - 1, 1); return ackermann(m - 1, ackermann(m, n - 1)); }
int power(int b, int n) { int h; if (n == 0) return 1; h = power(b, n / 2); if (n % 2) return h * h * b; return h * h; }
int hanoi(int n) { if (n == 0) return 0; return hanoi(n - 1) * 2 + 1; }
