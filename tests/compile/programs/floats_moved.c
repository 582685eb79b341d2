// calls: keep(3); floats(4); bits(); wide()
// c: double and float are carried, not computed
double stored;
float single;
int keep(int n) { double d; double e; d = 2.5; e = d; stored = e; return n; }
int floats(int n) { float f; float g; f = 1.5; g = f; single = g; return n + 1; }
int bits() { float f; int *p; f = 1.5; p = (int *)&f; return *p; }
INT64 wide() { double d; INT64 *p; d = 1.5; p = (INT64 *)&d; return *p; }
