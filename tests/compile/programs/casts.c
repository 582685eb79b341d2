// calls: narrow(1000); unsig(-1); wide(100000); signs(200); address(7); div(-8)
// modes: -o1
int narrow(int a) { return (char)a + (UCHAR)a * 10 + (short)(a * 100) * 3; }
int unsig(int a) { return (unsigned int)a / 1000; }
INT64 wide(int a) { return (INT64)a * a; }
int signs(int a) { char c; c = a; return (UCHAR)c - c; }
int address(int a) { int *p; char *c; a = 0x01020304; p = &a; c = (char *)p; return c[0] * 10 + c[3]; }
int div(int a) { return (int)((UINT32)a >> 28) + (a >> 2); }
