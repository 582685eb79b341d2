int a; int a;
extern int b; int b = 3; int c; extern int c;
int ;
int d,
;
int *;
int e
int f;
auto int h;
register int i;
int j[5;
int k = ;
int l();
char l();
int n; char n() { return 0; }
int o() { return 0; } int o;
int (*q)(int); int (*q)(int);
int (*r[2])(int); char (*r[2])(int);
enum E { A, B }; enum E { C };
enum { D, D };
enum { F } g
int m;
// args: -morvquiet
