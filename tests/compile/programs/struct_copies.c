// calls: local(); global(3); member(); pointer(); elements()
struct Point { int x; int y; };
struct Line { struct Point from; struct Point to; char name[6]; };
struct Line kept;
int local() { struct Point a; struct Point b; a.x = 3; a.y = 4; b = a; a.x = 9; return b.x * 100 + b.y * 10 + a.x; }
int global(int n) { struct Line l; l.from.x = n; l.to.y = n * 2; l.name[5] = 'q'; kept = l; l.to.y = 0; return kept.from.x * 10000 + kept.to.y * 1000 + kept.name[5]; }
int member() { struct Line l; struct Point p; p.x = 5; p.y = 6; l.from = p; l.to = l.from; l.to.x = 7; p = l.to; return l.from.x * 1000 + l.from.y * 100 + p.x * 10 + p.y; }
int pointer() { struct Point a; struct Point b; struct Point *p; a.x = 1; a.y = 2; p = &b; *p = a; p->x = 8; a = *p; return a.x * 10 + a.y; }
int elements() { struct Point a[3]; a[0].x = 4; a[0].y = 5; a[2] = a[0]; a[0].x = 1; a[1] = a[2]; return a[1].x * 10 + a[1].y; }
