int calls;
int yes(void) { calls = calls + 1; return 1; }
int no(void) { calls = calls + 1; return 0; }
int main()
{
  double d; int a[3]; int b; int i;
  if (no() && yes()) printf("never\n");
  if (yes() || no()) printf("one is enough\n");
  printf("calls %d\n", calls);
  d = 0.5;
  printf("%d %d %d\n", d && 1, d || 0, !d);
  d = 0.0;
  printf("%d %d\n", d && 1, !d);
  a[0] = 7; a[1] = 0; a[2] = 5; b = 0; i = 2;
  printf("%d %d %d\n", a[0] && b, a[1] || 1, a[i] && 0);
  printf("%d %d\n", b && a[0], 1 || a[1]);
  printf("%d %d\n", -a[0], 0 - a[0]);
  printf("%d %d\n", (a[0]) && b, (a[1]) || 1);
  printf("%d %d %d\n", !a[0], !a[1], ~a[0]);
  printf("%d\n", (a[0] != 0) && (b != 0));
  return 0;
}
