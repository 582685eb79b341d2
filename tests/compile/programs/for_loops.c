// calls: sum(10); nested(5, 4); down(20); declared(6); skip(20); leave(50); twice(); none(); both(10)
// modes: -o1; -cpu32
int sum(int n) { int i; int s; s = 0; for (i = 1; i <= n; i++) s += i; return s; }
int nested(int a, int b) { int i; int j; int s; s = 0; for (i = 0; i < a; i++) for (j = 0; j < b; j++) s = s * 3 % 1009 + i * j; return s; }
int down(int n) { int i; int s; s = 0; for (i = n; i > 0; i -= 3) { s = s * 2 % 9973 + i; } return s; }
int declared(int n) { int s; s = 1; for (int i = 2; i <= n; i++) s *= i; return s; }
int skip(int n) { int i; int s; s = 0; for (i = 0; i < n; i++) { if (i % 3 == 0) continue; s += i; } return s; }
int leave(int n) { int i; int s; s = 0; for (i = 0; i < n; i++) { if (i * i > n) break; s += i; } return s * 100 + i; }
int twice() { int i; int j; int s; s = 0; for (j = 0; j < 3; j++) { for (i = 0; i < 10; i++) { if (i == 4) break; s++; } s += 100; } return s; }
int none() { int i; int s; s = 7; for (i = 5; i < 5; i++) s = 0; return s + i; }
int both(int n) { int i; int s; s = 0; i = 0; for (; i < n;) { s += i; i = i + 2; } return s; }
