int as_int(int a) { return a; }
int as_char(char a) { return a; }
int as_short(short a) { return a; }
int as_byte(UCHAR a) { return a; }
double as_double(double a) { return a; }
float as_float(float a) { return a; }
int as_long(long a) { printf("%lld\n", a); return 0; }
function any($a) { $a += 1; return $a; }
function plain(a) { return a; }
int count(int a, char *s, double d, $v) { printf("%d %s %g %s\n", a, s, d, $v); return 0; }
int main()
{
  int i; long l; double d; char c; char *s;
  i = 0 - 3; l = 5000000000; d = 2.75; c = 200; s = "text";
  printf("%d %d %d %d\n", as_int(d), as_int(l), as_int(c), as_int(0 - d));
  printf("%d %d %d %d\n", as_char(300), as_char(i), as_char(d), as_byte(0 - 1));
  printf("%d %d\n", as_short(70000), as_short(i));
  printf("%g %g %g %d\n", as_double(i), as_double(c), as_double(d), as_float(0.1) == 0.1);
  as_long(l); as_long(i); as_long(d); as_long(c);
  printf("%s %s %s %s\n", any(1), any(1.5), any("a"), any(s));
  printf("%s %s %s %s\n", plain(c), plain(l), plain(d), plain(i));
  count(1.9, s, 3, "four"); count('a', "b", i, d); count(as_int(7), plain("p"), as_double(1), any(any(1)));
  return 0;
}
