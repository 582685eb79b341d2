// calls: run(4); vol(3)
// modes: -o1
int run(int n) { register int a; const int b = 6; auto int c; a = n; c = a * b; a = a + c; return a * 10 + b; }
int vol(int n) { volatile int v; int i; v = n; for (i = 0; i < 3; i++) v = v * 2; return v; }
