// calls: add(2147483647, 1); add(-2147483648, -1); sub(-2147483648, 1); mul(65536, 65537); mul(-46341, 46341)
// calls: neg(-2147483648); below(2147483647); beyond(2147483647); shifted(1, 31); shifted(-1, 31); rest(-7, 3)
// calls: widened(2147483647); halves(-2147483648); steps(2147483647); compound(2147483647); narrow(300, 70000)
// calls: unsigned_wrap(4294967295); unsigned_less(-1, 1); mixed(-1, 1); back(-5); bits(-2147483648); inverse(-1)
// calls: chosen(2147483647, 2); argument(2147483647); texts(200); array_wrap(2147483647); digits(-128)
int add(int a, int b) { return a + b; }
int sub(int a, int b) { return a - b; }
int mul(int a, int b) { return a * b; }
int neg(int a) { return -a; }
int below(int a) { return a + 1 < a; }
int beyond(int a) { int b; b = a + 1; if (a + 1 > 0) return 1; return b < 0 ? 2 : 3; }
int shifted(int a, int n) { return (a << n) >> n; }
int rest(int a, int b) { return a % b * 100 + a / b; }
INT64 widened(int a) { INT64 w; w = a * 2; return w; }
int halves(int a) { return (a - 1) / 2; }
int steps(int a) { a++; return a < 0; }
int compound(int a) { a += a; a *= 3; return a / 7; }
int narrow(int a, int b) { char c; short s; c = a; s = b; return c * 100000 + s; }
int unsigned_wrap(unsigned int a) { return a + 1 == 0; }
int unsigned_less(unsigned int a, unsigned int b) { return (a < b) * 2 + (a - b > b); }
int mixed(int a, unsigned int b) { return (a < b) + 2 * (a > b); }
unsigned int back(int a) { unsigned int u; u = a; return u / 2 + (u >> 3); }
int bits(int a) { return (a >> 31) & 255 ^ (a & 1); }
INT64 inverse(int a) { unsigned int u; u = ~a; return ~u + (INT64)~a; }
int chosen(int a, int k) { switch (a + 1) { case -2147483648: return 5 * k; case 2: return 1; default: return 0; } }
int half(int a) { return a / 2; }
int argument(int a) { return half(a + 1); }
int texts(int a) { unsigned char u; INT8 s; u = a; s = a; return u * 1000 + s; }
int array_wrap(int a) { int v[2]; v[0] = a; v[1] = v[0] + 1; return v[1] < v[0]; }
int digits(int a) { char c; c = a; c--; return c; }
