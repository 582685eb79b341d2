// calls: local(3, 4); global(5); array(2); sum(); narrow(200)
// modes: -o1; -addr32
struct Point { int x; int y; };
struct Mixed { char c; short s; int i; UCHAR u; INT64 w; };
struct Point origin;
struct Point set = {11, 22};
struct Point list[3];
int local(int a, int b) { struct Point p; p.x = a; p.y = b; p.x = p.x * p.y; return p.x * 10 + p.y; }
int global(int n) { origin.x = n; origin.y = origin.x + set.y; set.x += 1; return origin.y * 100 + set.x; }
int array(int i) { list[i].x = 7; list[i].y = list[i].x * i; list[0].x = 1; return list[2].y * 10 + list[0].x; }
int sum() { struct Point p[4]; int i; int s; for (i = 0; i < 4; i++) { p[i].x = i; p[i].y = i * i; } s = 0; for (i = 0; i < 4; i++) s += p[i].x * 100 + p[i].y; return s; }
int narrow(int n) { struct Mixed m; m.c = n; m.s = n * 300; m.i = n * 70000; m.u = n + 100; m.w = n; m.w = m.w * 5; return m.c + m.s * 2 + m.i * 3 + m.u * 4 + m.w * 5; }
