// calls: guarded(0); guarded(1); skipped(0, 1); skipped(1, 0); chain(1, 2, 3); chain(0, 2, 3); chain(1, 0, 0); order(5)
// calls: divisor(0); divisor(4); nested(3); nested(0); value(2, 0); value(0, 7); loop(6); arms(1); arms(0); parens(1, 0, 1)
// calls: with_calls(0); with_calls(3); in_argument(0); in_argument(9); assigned(0); assigned(4); negated(0); in_index(2)
int count;
int touched(int result) { count = count * 10 + 1 + result; return result; }
int guarded(int on) { int a; int *p; p = 0; a = 42; if (on) p = &a; if (p && *p == 42) return *p; return -1; }
int skipped(int a, int b) { int n; n = 0; if (a && n++) n += 10; if (b || n++) n += 100; return n; }
int chain(int a, int b, int c) { int n; n = 0; n = a && b && (n = 5) && c; return n + (a || b || c) * 10; }
int order(int a) { count = 0; touched(0) || touched(1) && touched(0) || touched(a); return count; }
int divisor(int a) { return a != 0 && 100 / a > 20; }
int nested(int a) { int r; r = (a > 1 && (a < 5 || touched(1))) || (a == 0 && !touched(0)); return r; }
int value(int a, int b) { return (a && 1) + (b || 0) * 2 + (a && b) * 4 + (a || b) * 8; }
int loop(int n) { int i; int s; s = 0; for (i = 0; i < n && s < 9; i++) { while (s % 2 && s < 7) s++; s += i; } return s * 100 + i; }
int arms(int a) { return a && touched(1) ? touched(1) + 1 : touched(0) - 1; }
int parens(int a, int b, int c) { return ((a && b) || c) && !(a && (b || !c)); }
int with_calls(int a) { count = 0; if (touched(a) && touched(a - 3)) return 1000 + count; return count; }
int both(int a, int b) { return a * 10 + b; }
int in_argument(int a) { return both(a && touched(1), touched(0) || a); }
int assigned(int a) { int b; b = 3; if (a || (b = 7)) b++; return b; }
int negated(int a) { return !(a && 10 / a) && !(a || 0); }
int in_index(int a) { int v[2]; v[0] = 5; v[1] = 9; return v[a && v[1] > 3]; }
