// calls: swap(3, 8); rotate(1, 2, 3)
// modes: -addr32; -cpu32
void exchange(int *a, int *b) { int t; t = *a; *a = *b; *b = t; }
int swap(int a, int b) { exchange(&a, &b); return a * 10 + b; }
int rotate(int a, int b, int c) { exchange(&a, &b); exchange(&b, &c); return a * 100 + b * 10 + c; }
