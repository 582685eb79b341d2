// calls: f(3); g(3); h(2)
int f(int n) { int s; s = 0; again: s += n; n--; if (n > 0) goto again; return s; }
int g(int n) { int s; s = 1; again: s *= n; n--; if (n > 0) goto again; return s; }
int v;
int h(int n) { f: if (n < 40) { n = n + f(n); goto f; } v: v = n; if (v > 1000) goto v; return v; }
