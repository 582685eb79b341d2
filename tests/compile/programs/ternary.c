// calls: max(3, 9); max(9, 3); bare(0); bare(7); nested(5); nested(-5); nested(0); inside(4, 2); sides(1); sides(0)
int count;
int step(int by) { count = count + by; return count; }
int max(int a, int b) { return a > b ? a : b; }
int bare(int a) { return a ? 100 : 200; }
int nested(int a) { return a > 0 ? 1 : (a < 0 ? -1 : 0); }
int inside(int a, int b) { return 10 + (a > b ? a * 2 : b * 3) * 5; }
int sides(int a) { int r; count = 0; r = a ? step(1) : step(10); return r * 100 + count; }
