// calls: local(2); global(3); arrays(1, 2); pointers(); set()
// modes: -addr32
struct Inner { short a; int b[3]; };
struct Outer { char tag; struct Inner one; struct Inner many[2]; int last; };
struct Outer shared;
struct Outer known = {1, {2, {3, 4, 5}}, {{6, {7, 8, 9}}, {10, {11, 12, 13}}}, 14};
int local(int n) { struct Outer o; o.one.a = n; o.one.b[1] = n * 2; o.many[1].b[2] = n * 3; o.last = 9; return o.one.a * 1000 + o.one.b[1] * 100 + o.many[1].b[2] * 10 + o.last; }
int global(int n) { shared.tag = n; shared.many[0].a = n + 1; shared.many[0].b[n - 1] = 50; return shared.tag + shared.many[0].a * 10 + shared.many[0].b[2] * 100; }
int arrays(int i, int j) { struct Outer o[2]; o[1].many[i].b[j] = 33; o[0].last = 4; o[1].last = 5; return o[1].many[1].b[2] * 10 + o[0].last; }
int pointers() { struct Inner *p; p = &shared.many[1]; p->a = 7; p->b[2] = 8; return shared.many[1].a * 10 + shared.many[1].b[2]; }
int set() { return known.tag + known.one.b[2] * 10 + known.many[1].b[0] * 100 + known.last * 10000; }
