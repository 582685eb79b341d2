// calls: run(7); structs(3); links(5); arrays(2); unsig(5)
typedef int Count;
typedef Count Total;
typedef unsigned char Byte;
typedef struct { int x; int y; } Point;
typedef Point *PointPointer;
typedef struct Link { int v; struct Link *next; } Link;
Total run(Count n) { Total t; t = n * 2; return t + 1; }
int structs(int n) { Point p; PointPointer q; p.x = n; p.y = 4; q = &p; q->x += 1; return p.x * 10 + p.y; }
int links(int n) { Link a; struct Link b; a.v = n; a.next = &b; b.v = n * 3; return a.next->v + a.v; }
int arrays(int n) { Count a[3]; Byte b[3]; a[n] = 300; b[n] = a[n]; return a[n] + b[n]; }
int unsig(int n) { Byte b; b = n - 10; return b; }
