// calls: run(3); deep(2); order(1); expression(4, 5)
// modes: -cpu32; -addr32
int add(int a, int b) { return a + b; }
int mul(int a, int b) { return a * b; }
int three(int a, int b, int c) { return a * 100 + b * 10 + c; }
int run(int n) { return add(mul(n, 4), add(n, mul(2, n))); }
int deep(int n) { return add(add(add(add(n, 1), 2), 3), mul(mul(n, n), mul(n, 2))); }
int order(int n) { return three(add(n, 1), add(n, 2), add(n, 3)) + three(n, mul(n, 5), 9) * 1000; }
int expression(int a, int b) { return a + mul(a, b) * 2 - add(a, b) / 3 + b; }
