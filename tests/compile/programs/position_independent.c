// calls: run(4); table(2); pointer(5); recurse(5)
// modes: -pic
int values[3] = {100, 200, 300};
int total;
char *names[2] = {"ab", "cde"};
int helper(int a) { total += a; return total; }
int run(int n) { total = n; helper(1); return helper(2) + total; }
int table(int i) { return values[i] + names[1][2]; }
int pointer(int n) { int (*f)(int); int *p; p = &total; *p = 10; f = helper; return f(n) + *p; }
int recurse(int n) { if (n == 0) return 0; return n + recurse(n - 1); }
