// calls: keep(3); floats(4)
// c: double and float are carried, not computed
double stored;
float single;
int keep(int n) { double d; double e; d = 2.5; e = d; stored = e; return n; }
int floats(int n) { float f; float g; f = 1.5; g = f; single = g; return n + 1; }
