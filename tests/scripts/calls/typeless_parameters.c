function show($v) { if ($v == 0) return "zero or text"; return "number"; }
function twice($v) { $v = $v + $v; return $v; }
subroutine pair(a, b) { printf("%s-%s\n", a, b); }
function countdown($n) { if ($n == 0) return "go"; return morv_concat($n, " ") + countdown($n - 1); }
function grow($t, n) { if (n == 0) return $t; $t += n; return grow($t, n - 1); }
function local(n) { $kept = n + 1; return $kept; }
int main()
{
  $x = "text";
  printf("%s %s %s\n", twice("ab"), twice(4), twice(1.25));
  printf("%s %s\n", twice($x), $x);
  pair(1, "two"); pair("one", 2.5); pair($x, twice(1));
  printf("%s\n", countdown(3));
  printf("%s\n", grow("t", 3));
  printf("%s %s\n", show(0), show(5));
  printf("%s\n", local(3));
  $kept = "mine"; local(4); printf("%s\n", $kept);
  return 0;
}
