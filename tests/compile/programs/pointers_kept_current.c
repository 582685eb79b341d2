// calls: f(5); g(3); h(2)
int f(int a) { int b; int *p; b = a; p = &b; b = b + 1; *p = *p * 2; b = b + 1; return b * 100 + *p; }
void bump(int *p) { *p = *p + 10; }
int g(int n) { int i; int s; s = 0; for (i = 0; i < n; i++) { bump(&s); s++; } bump(&i); return s * 100 + i; }
int shared;
void change() { shared = shared + 100; }
int h(int n) { int a; shared = n; a = shared + 1; change(); a = a + shared; change(); return a + shared; }
