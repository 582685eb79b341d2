// calls: and(0, 0); and(5, 0); and(0, 6); and(5, 6); or(0, 0); or(5, 0); or(0, 6); mixed(1, 0, 3); mixed(0, 0, 0); value(3, 0)
// calls: elements(0); elements(1); wide(4294967296)
// modes: -o1
int and(int a, int b) { return a && b; }
int or(int a, int b) { return a || b; }
int mixed(int a, int b, int c) { return ((a && b) || c) + ((a || b) && !c) * 2; }
int value(int a, int b) { int r; r = (a > 2) && (b < 1); return r + (a && 1) + (b || 0); }
int elements(int i) { int a[2]; a[0] = 7; a[1] = 0; return (a[i] && 1) + (a[i] || 0) * 2; }
int wide(INT64 a) { return (a && 1) + (a || 0) * 2; }
