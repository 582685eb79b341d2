// calls: read(5); write(5); chain(4); compare(); null(1); null(0); narrow(300)
// modes: -o1; -addr32; -cpu32
int global = 9;
int read(int a) { int *p; p = &a; return *p + 1; }
int write(int a) { int b; int *p; b = a; p = &b; *p = b * 3; *p += 2; return b; }
int chain(int a) { int *p; int **q; p = &a; q = &p; **q = a + 5; p = &global; *p = *p + 1; return a * 100 + **q; }
int compare() { int a; int b; int *p; int *q; p = &a; q = &a; a = (p == q) * 2; q = &b; return a + (p != q); }
int null(int set) { int a; int *p; a = 5; p = 0; if (set) p = &a; if (p == 0) return -1; return *p; }
int narrow(int n) { char c; short s; char *p; short *q; p = &c; q = &s; *p = n; *q = n; return c * 1000 + s; }
