// `&&`, `||` and a minus take an indexed operand as it stands; `!`, `~` and a parenthesis read it.
int main()
{
  int z; int a[3]; double e[2]; char c[2]; int x; int zero;
  a[0] = 7; a[1] = 0; a[2] = 5; e[0] = 2.5; c[0] = 200; x = 3; zero = 0;
  for (z = 0; z < 3; z++) {
    printf("%d %d %d %d\n", a[0] && 0, 0 && a[0], a[1] || 1, x && a[1]);
    printf("%d %d\n", (a[0]) && (a[1]), (a[0]) || (a[1]));
    printf("%d %d %d %d\n", -a[0], -(a[0]), -a[0] + 1, 1 - a[0]);
    printf("%g %g %d\n", -e[0], -(e[0]), -c[0]);
    printf("%d %d %d\n", !a[0], ~a[0], !a[1]);
    printf("%d %d\n", a[0] > 1 && a[1] < 1, x && zero || x);
    if (a[0] && zero) printf("first\n");
    if (zero && a[0]) printf("second\n");
    if (a[1] || x) printf("third\n"); else printf("fourth\n");
  }
  return 0;
}
// turns: 3
