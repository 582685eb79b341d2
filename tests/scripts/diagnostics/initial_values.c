char s[2] = "ab"; char t[3] = "ab";
int a[][] = {1};
int b[2][] = {1};
int c[2] = {1, 2, 3};
int d[2][2] = {{1, 2, 3}, {4}};
struct S { int a; int b; }; struct S e = {1, 2, 3};
struct S f[2] = {{1, 2}, {3, 4}, {5, 6}};
union U { int a; } g = {1, 2};
int h = unknown;
int i; int j = i;
int k = 1 / 0;
int l[3] = {
  1,
  2,
  3,
  4
};
int m[3] = {1, 2;
int n = ;
int o; int o; char *r[2] = "x";
int p[3] = 5; struct Q { }; struct Q q[] = {1};
// args: -morvquiet
