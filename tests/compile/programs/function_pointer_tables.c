// calls: run(0, 9); run(1, 9); run(2, 9)
int zero(int a) { return a - a; }
int one(int a) { return a + 1; }
int two(int a) { return a + 2; }
int (*table[3])(int);
int run(int i, int n) { int (*f)(int); table[0] = zero; table[1] = one; table[2] = two; f = table[i]; return f(n); }
