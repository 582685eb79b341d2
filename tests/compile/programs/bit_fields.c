// calls: run(5, 3, 9); wrap(20); neighbours(); pointer(6); condition(1); condition(2)
// calls: signed_work(3)
struct Flags { int a : 4; int b : 5; int c : 10; };
int run(int x, int y, int z) { struct Flags f; f.a = x; f.b = y; f.c = z; return f.a * 10000 + f.b * 100 + f.c; }
int wrap(int x) { struct Flags f; f.a = 0; f.b = 0; f.c = 0; f.c = x * 20; f.b = 12; f.b = f.b + 3; return f.a * 100000 + f.b * 1000 + f.c; }
int neighbours() { struct Flags f; f.a = 7; f.b = 15; f.c = 511; f.b = 0; return f.a * 100000 + f.b * 1000 + f.c; }
int pointer(int n) { struct Flags f; struct Flags *p; p = &f; p->a = 1; p->b = 2; p->c = n; p->c += 5; return p->a * 10000 + f.b * 1000 + f.c; }
int condition(int n) { struct Flags f; f.a = n; f.b = 0; if (f.a == 2) return 50; if (f.b) return 60; return 70; }
struct Bits { unsigned int a : 5; unsigned int b : 9; };
int signed_work(int n) { struct Bits s; s.a = n; s.b = n; return (-1 < s.a) + (s.b - 4 > 0) * 2 + (s.b - 512) / 2 * 4 + (0 - s.a > 0) + (n ? s.a : 1) - 9 >> 1; }
