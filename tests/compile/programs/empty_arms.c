// calls: f(1); f(0); g(1); g(0)
int f(int a) { int r; r = 5; if (a) ; else r = 7; return r; }
int g(int a) { int r; r = 5; if (a) { r = 6; } else { } return r; }
