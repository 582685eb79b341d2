int main()
{
  char *p;
  $s = "a"; $s += 1; $s += 2.5;
  printf("%s\n", $s);
  $n = 1; $n += "b"; $n += 2;
  printf("%s\n", $n);
  $a = "x"; $b = $a; $a += "y";
  printf("%s %s\n", $a, $b);
  $d = 1.5; $d += 1; $d *= 2;
  printf("%g\n", $d);
  $d += " apples";
  printf("%s\n", $d);
  $s = "start";
  $s = 12;
  $s += 3;
  printf("%d\n", $s);
  p = "end";
  $s = "the "; $s += p;
  printf("%s\n", $s);
  $i = 5; $i = $i / 2;
  printf("%d\n", $i);
  $i = 5; $i = $i / 2.0;
  printf("%g\n", $i);
  return 0;
}
