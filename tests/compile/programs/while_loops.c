// calls: sum(10); sum(0); gcd(48, 36); digits(98765); collatz(27); until(100)
// modes: -o1; -cpu32; -cpu32 -o1
int sum(int n) { int s; s = 0; while (n > 0) { s += n; n = n - 1; } return s; }
int gcd(int a, int b) { int t; while (b != 0) { t = a % b; a = b; b = t; } return a; }
int digits(int n) { int s; s = 0; while (n) { s = s * 10 + n % 10; n = n / 10; } return s; }
int collatz(int n) { int c; c = 0; while (n != 1) { if (n % 2 == 0) n = n / 2; else n = 3 * n + 1; c++; } return c; }
int until(int n) { int i; i = 0; while (1) { i += 7; if (i > n) break; if (i % 2) continue; i++; } return i; }
