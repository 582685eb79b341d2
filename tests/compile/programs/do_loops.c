// calls: once(0); count(5); continues(10); leaves(30); nested(4)
// modes: -o1; -cpu32
int once(int n) { int s; s = 0; do { s += 5; } while (n); return s; }
int count(int n) { int s; s = 0; do { s = s * 2 + n; n--; } while (n > 0); return s; }
int continues(int n) { int i; int s; i = 0; s = 0; do { i++; if (i % 2) continue; s += i; } while (i < n); return s * 100 + i; }
int leaves(int n) { int i; i = 0; do { i += 4; if (i == 12) break; } while (i < n); return i; }
int nested(int n) { int i; int j; int s; s = 0; i = 0; do { j = 0; do { s += i * j; j++; } while (j < n); i++; } while (i < n); return s; }
