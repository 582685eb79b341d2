// calls: all(20, 3); bits(200, 5); left(-17, 4)
// modes: -o1; -cpu32
int all(int a, int b) { a += b; a -= 2; a *= b; a /= 2; a %= 17; return a; }
int bits(int a, int b) { a &= 0xFC; a |= b; a ^= 15; a <<= 3; a >>= 1; return a; }
int left(int a, int b) { int c; c = a; c >>= 2; a *= b + 1; a -= b - c; return a * 10 + c; }
