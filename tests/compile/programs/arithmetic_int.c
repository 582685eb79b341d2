// calls: sum(2, 3); sum(-5, 3); mixed(7, -3, 4); mixed(-100, 9, -2); divide(17, 5); divide(-17, 5); divide(17, -5)
// calls: chain(10); chain(-1000); negate(5); negate(-7)
// modes: -o1; -cpu32; -cpu32 -o1; -addr32
int sum(int a, int b) { return a + b; }
int mixed(int a, int b, int c) { return a * b - c * (a + b) + c; }
int divide(int a, int b) { return (a / b) * 100 + (a % b); }
int chain(int a) { return ((a + 1) * 2 - 3) * 4 + 5 - a; }
int negate(int a) { int b; b = -a; return -b - -a + -(a + 1); }
