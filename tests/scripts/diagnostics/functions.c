int f(int); char f(int);
int g(int a) { return 1; } int g(int b) { return 2; }
int h(int, char b) { return 1; }
int i(int a, int a) { return 1; }
void j(...);
void k(int a, ...) { }
int l(unsigned);
int n() { int o() { return 1; } return 0; }
int p(int a) { int a; { int a; } return 0; }
int q() { int a; int a; { int a; { int a; } } return 0; }
int r() { int a[]; int b = b; { int c = c + 1; } return 0; }
int s() { l: l: return 0; }
int t() { int m; m: return 0; }
int v(struct Unknown p) { return 0; }
int w(struct Unknown *p) { return 0; }
int u() { return 0;
// args: -morvquiet
