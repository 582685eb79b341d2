int none(int a) { }
int seven(int a) { return 7; }
int truncates(double d) { return d; }
int low(int a) { long l; l = 4294967301; return l; }
int text(int a) { return "abc"; }
double nothing(int a) { }
double half(int a) { return a / 2.0; }
double whole(int a) { return a; }
float narrow(int a) { return 0.1; }
long no_long(int a) { return 77; }
short no_short(int a) { return 77; }
char no_char(int a) { return 65; }
char *name(int a) { if (a) return "name"; return 0; }
char *number(int a) { return 42; }
void bare(int a) { if (a) return; printf("not left\n"); }
function any(a) { if (a == 1) return "text"; if (a == 2) return 2.5; if (a == 3) return; return a; }
function silent(a) { }
int main()
{
  int x; double d; long l;
  printf("%d ", none(1)); seven(1); printf("%d ", none(1)); printf("%d\n", seven(1) + none(1));
  printf("%d %d %d\n", truncates(2.9), truncates(0 - 2.9), low(1));
  printf("%d\n", text(1));
  printf("%g ", nothing(1)); half(5); printf("%g\n", nothing(1));
  printf("%g %g %d\n", half(3), whole(3), narrow(1) == 0.1);
  printf("[%d] [%d] [%d] [%s]\n", no_long(1), no_short(1), no_char(1), no_long(1));
  x = 5; x = no_long(1); l = 5; l = no_long(1); printf("%d %d\n", x, l);
  printf("[%s] [%s] [%s]\n", name(1), name(0), number(1));
  bare(1); bare(0); printf("[%s]\n", bare(1));
  printf("%s %s %s\n", any(1), any(2), any(4));
  any(1); printf("%s ", any(3)); printf("%s\n", any(4) + 1);
  any(1); printf("%s ", silent(1)); any(2); printf("%s ", silent(1)); any(4); printf("%s\n", silent(1));
  d = any(2) + whole(1); printf("%g\n", d);
  return 0;
}
