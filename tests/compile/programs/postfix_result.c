// calls: f(5); g(9); h(2)
int f(int y) { return y++; }
int id(int a) { return a; }
int g(int n) { int r; r = id(n++); return r * 100 + n; }
int h(int n) { int s; s = 0; while (n--) s += 10; return s * 10 + n; }
