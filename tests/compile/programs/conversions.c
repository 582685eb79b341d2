// calls: assign(-2); assign(70000); mixed(-1, 1); widen(-1); promote(200, 100); product(70000)
int assign(int a) { UCHAR u; UINT16 w; unsigned int d; INT64 q; u = a; w = a; d = a; q = d; return u + w + (q > 0) * 1000000; }
int mixed(int a, unsigned int b) { return (a < b) * 10 + (a > b); }
INT64 widen(int a) { unsigned int u; INT64 x; INT64 y; u = a; x = u; y = a; return x + y; }
int promote(int a, int b) { UCHAR x; UCHAR y; char c; x = a; y = b; c = x; return (x + y) * 10 + (x < y) + (c < y); }
INT64 product(int a) { INT64 w; w = a; return w * a; }
