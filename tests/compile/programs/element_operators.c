// calls: run(1); members(4)
struct S { int a; int b; };
int run(int i) { int a[3]; a[0] = 5; a[1] = 7; a[2] = 9; a[i] += a[i + 1]; a[0]++; --a[2]; a[i] -= -a[0]; return a[0] * 10000 + a[1] * 100 + a[2]; }
int members(int n) { struct S s; s.a = n; s.b = 3; s.a *= s.b; s.b <<= 2; s.a++; s.b--; return s.a * 100 + s.b - -s.a; }
