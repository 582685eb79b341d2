// calls: prefix(5); postfix(5); alone(5); values(5); index(2); chars(127); pointers()
// modes: -o1; -cpu32
int prefix(int a) { int b; int c; b = ++a; c = --a; return b * 100 + c * 10 + a; }
int postfix(int a) { int b; int c; b = a++; c = a--; return b * 100 + c * 10 + a; }
int alone(int a) { a++; ++a; a++; a--; --a; return a; }
int values(int a) { int r; r = a++ * 10; r = r + --a; return r * 10 + a; }
int index(int i) { int a[6]; int k; for (k = 0; k < 6; k++) a[k] = k * 11; a[i++] = 5; return a[2] * 1000 + a[i] * 10 + i; }
int chars(int a) { char c; UCHAR u; c = a; c++; u = 0; u--; return c * 1000 + u; }
int pointers() { int a[4]; int *p; int s; a[0] = 1; a[1] = 20; a[2] = 300; a[3] = 4000; p = a; s = *p; p++; s += *p; ++p; s += *p; p--; return s * 10 + *p; }
