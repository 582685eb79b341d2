// calls: chars(100, 100); chars(-100, -100); uchars(200, 100); shorts(30000, 10000); ushorts(60000, 10000); chain(300)
// calls: sign(200); compound(250); bools(7)
// modes: -o1; -cpu32; -addr32
int chars(int a, int b) { char c; c = a + b; return c; }
int uchars(int a, int b) { UCHAR c; c = a + b; return c; }
int shorts(int a, int b) { short s; s = a + b; return s; }
int ushorts(int a, int b) { UINT16 s; s = a + b; return s; }
int chain(int a) { UCHAR u; char c; short s; u = a; c = u; s = c; s = s * 300; return s + u; }
int sign(int a) { char c; INT8 d; c = a; d = a; return (c < 0) * 2 + (d < 0); }
int compound(int a) { UCHAR u; UINT16 w; u = a; u += 10; w = 65530; w += u; u -= 200; return u * 1000 + w; }
int bools(int a) { UINT8 f; f = a > 3; return f + (a == 7); }
