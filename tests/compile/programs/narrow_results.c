// calls: c(300); u(300); s(70000); w(70000); user(1000)
char c(int a) { return a; }
UCHAR u(int a) { return a; }
short s(int a) { return a; }
UINT16 w(int a) { return a; }
int user(int a) { return c(a) + u(a) * 2 + s(a * 100) * 3 + w(a * 100) * 4; }
