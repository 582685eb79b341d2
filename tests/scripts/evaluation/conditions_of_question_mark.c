// The condition is taken as it stands: a plain variable has not been read yet.
int one(int n) { return n; }
int main()
{
  int z; int x; int a[2]; double d; long l; char *s;
  for (z = 0; z < 3; z++) {
    x = 3; a[0] = 3; d = 1.0; l = 4294967296; s = "text";
    printf("%d %d %d %d\n", x ? 1 : 2, (x) ? 1 : 2, x + 0 ? 1 : 2, x != 0 ? 1 : 2);
    printf("%d %d %d\n", a[0] ? 1 : 2, (a[0]) ? 1 : 2, 5 ? 1 : 2);
    printf("%d %d %d\n", d ? 1 : 2, (d) ? 1 : 2, 0.5 ? 1 : 2);
    printf("%d %d %d\n", l ? 1 : 2, (l) ? 1 : 2, l + 0 ? 1 : 2);
    printf("%d %d %d\n", ++x ? 1 : 2, x++ ? 1 : 2, one(5) ? 1 : 2);
    printf("%d %d\n", !x ? 1 : 2, (s) ? 1 : 2);
    x = x == 5 ? x == 4 ? 10 : 20 : 30; printf("%d\n", x);
    printf("%s %g\n", x > 1 ? "many" : "few", x < 1 ? 1 : 2.5);
    x = 1; x == 1 ? (x = 5) : (x = 6); printf("%d\n", x);
  }
  return 0;
}
// turns: 3
