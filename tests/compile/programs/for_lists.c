// calls: meet(0, 10); sum(5)
int meet(int a, int b) { int i; int j; for (i = a, j = b; i < j; i++, j--) ; return i * 100 + j; }
int sum(int n) { int i; int s; for (s = 0, i = 1; i <= n; s += i, i++) ; return s; }
