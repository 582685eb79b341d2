// calls: run(3); choose(1, 5); choose(0, 5); starred(4); passed(6)
int twice(int a) { return a * 2; }
int square(int a) { return a * a; }
int minus(int a, int b) { return a - b; }
int (*handler)(int);
int run(int n) { int (*f)(int); f = twice; n = f(n); f = square; return f(n); }
int choose(int which, int n) { if (which) handler = square; else handler = twice; return handler(n) + 1; }
int starred(int n) { int (*f)(int, int); f = minus; return (*f)(n, 10); }
int apply(int (*f)(int), int n) { return f(n) + f(n + 1); }
int passed(int n) { return apply(twice, n) * 1000 + apply(square, n); }
