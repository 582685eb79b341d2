// calls: sum(5000000000, 7000000000); product(3000000, 4000000); quotient(-9000000000000, 7); shift(1, 40); back(123456789012345)
// calls: unsig(-1, 3); compare(5000000000, 4999999999); cut(4294967297); widen(-5)
// calls: widest(5:8)
INT64 sum(INT64 a, INT64 b) { return a + b; }
INT64 product(INT64 a, INT64 b) { return a * b; }
INT64 quotient(INT64 a, INT64 b) { return (a / b) + (a % b); }
INT64 shift(INT64 a, int n) { return (a << n) | (a << 3); }
INT64 back(INT64 a) { return (a >> 20) - (a >> 3); }
UINT64 unsig(UINT64 a, UINT64 b) { return (a / b) + (a >> 60) + (a < b); }
int compare(INT64 a, INT64 b) { return (a > b) * 4 + (a < b) * 2 + (a == b); }
int cut(INT64 a) { int i; i = a; return i; }
INT64 widen(int a) { INT64 w; w = a; return w * 3000000000; }
UINT64 widest(UINT64 n) { return 0xffffffffffffffff / 7 + (n < 0xfffffffffffffff0) + (n ? 0xffffffff : 1); }
