// calls: run(3); loops(4); hidden()
// modes: -o1
int x = 5;
int run(int a) { int r; r = a; { int a1; a1 = a * 2; { int r1; r1 = a1 + x; r = r + r1; } a1 = a1 + 1; r = r * a1; } return r; }
int loops(int n) { int s; s = 0; for (int i = 0; i < n; i++) { int k; k = i * 2; s += k; } for (int i = 0; i < n; i++) { int k; k = i * 3; s += k; } return s; }
int hidden() { int r; int x; x = 7; r = x; { int x; x = 100; r += x; } return r + x; }
