// calls: f(10)
int f(int n) { int i; int s; s = 0; i = 0; for (;;) { if (i >= n) break; s += i; i++; } return s; }
