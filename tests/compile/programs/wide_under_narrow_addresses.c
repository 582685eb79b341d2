// calls: run(3)
// modes: -addr32
INT64 scale(INT64 a, int b, INT64 c) { return a * b + c; }
INT64 run(int n) { INT64 big; big = 5000000000; return scale(big, n, 7) + scale(1, 2, big); }
