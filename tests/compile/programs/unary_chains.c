// calls: run(5); run(0); run(-3); logical(2)
// modes: -o1
int run(int a) { return -(-a) + ~(~a) + !(!a) + -(~a) * 2; }
int logical(int a) { int b; b = !(a > 1) + !(a < 1); return b * 10 + -b; }
