int truncates(double d) { return d; }
float narrows(int a) { return a; }
double widens(int a) { return a; }
char *text() { char b[8]; b[0] = 'h'; b[1] = 'i'; b[2] = 0; return b; }
char *literal(int a) { return "literal"; }
char letter(int a) { return 65; }
short half(int a) { return 66; }
long wide(int a) { return 67; }
function any(k)
{
  if (k == 0) return "text";
  if (k == 1) return 2.5;
  return 3;
}
subroutine shout(t) { printf("%s!\n", morv_upper(t)); }
int main()
{
  printf("%d %d\n", truncates(2.9), truncates(0 - 2.9));
  printf("%g %g\n", narrows(3) / 2, widens(3) / 2);
  printf("%s %s\n", text(), literal(0));
  printf("%d %d %d\n", letter(0), half(0), wide(0));
  printf("%s %g %d\n", any(0), any(1), any(2));
  printf("%g\n", any(1) * 2);
  $t = any(0);
  printf("%s\n", $t + 1);
  shout("hi");
  return 0;
}
