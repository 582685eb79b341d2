// calls: power(3, 30); unsig(18446744073709551615); many(1, 2, 3, 4)
long power(long base, int n) { long r; r = 1; while (n > 0) { r = r * base; n--; } return r; }
int unsig(unsigned long a) { return a / 1000000007 % 1000; }
long many(long a, int b, long c, int d) { return a * 1000 + b * 100 + c * 10 + d; }
