// calls: f(3); g(3)
int f(int n) { int s; s = 0; again: s += n; n--; if (n > 0) goto again; return s; }
int g(int n) { int s; s = 1; again: s *= n; n--; if (n > 0) goto again; return s; }
