int x = 7; int a[4] = {1, 2, 3}; double d = 0.0 - 2.5; float f = 0.25; long l = 5000000000; char c = 'c'; char t[] = "text"; char room[8] = "ro";
char *s = "pointer"; char *names[] = {"ann", "bob", "eve"}; int m[2][2] = {{1, 2}, {3, 4}}; int neg = -3;
struct P { int x; char *n; double d; }; struct P p = {4, "four", 4.5}; struct P ps[2] = {{1, "one", 1.5}, {2, "two", 2.5}};
int again(int n) { int k = 5; int b[3] = {1, 2, 3}; char w[4] = "ab"; k += n; b[1] += n; w[0] = 'z'; return k * 100 + b[1] * 10 + b[2]; }
int calls(int n) { static int count = 10; count++; return count * n; }
int main()
{
  int z; int i = x + 1; double e = 1.5; char *u = "local"; int b[2] = {8, 9}; char v[6] = "hey";
  printf("%d %d %d %g %g %lld %c %s %s %d\n", x, a[2], a[3], d, f, l, c, t, room, neg);
  printf("%s %s %s %d %d\n", s, names[0], names[2], m[1][0], sizeof(t));
  printf("%d %s %g %s %g\n", p.x, p.n, p.d, ps[1].n, ps[0].d);
  printf("%d %g %s %d %s\n", i, e, u, b[1], v);
  for (z = 0; z < 2; z++) { int k = 3; int w[2] = {5, 6}; printf("%d %d %d %d\n", k, w[1], again(z), calls(1)); k = 9; w[1] = 0; }
  return 0;
}
