int main()
{
  int z; int i; double d; char c; long l;
  for (z = 0; z < 3; z++) {
    $v = 5; printf("%s ", $v); $v = 2.5; printf("%s ", $v); $v = "text"; printf("%s ", $v); $v = 'a'; printf("%s\n", $v);
    $n = 0 - 5; printf("%d %d %g\n", $n, $n + 1, $n * 1.5);
    $n++; ++$n; printf("%d ", $n); $n--; printf("%d ", $n); $d = 1.5; $d++; --$d; $d--; printf("%g\n", $d);
    $n = 17; $n /= 5; printf("%d ", $n); $n *= 2.5; printf("%s ", $n); $n -= 7; printf("%s ", $n); $n %= 2; printf("%s\n", $n);
    $n = 6; $n <<= 3; printf("%d ", $n); $n |= 1.9; printf("%d ", $n); $n ^= 48; printf("%d\n", $n);
    l = 5000000000; $l = l; printf("%d %d\n", $l, $l + 0);
    c = 200; $c = c; printf("%d ", $c); i = $c; printf("%d ", i); d = $d; printf("%g\n", d);
    $a = $b = "both"; $a += "!"; printf("%s %s\n", $a, $b);
    if ($a) printf("true\n"); else printf("text is false\n");
    if ($n) printf("number is true\n");
    $t = "t"; $t -= 1; $t *= 2; printf("%s %d %d\n", $t, !$t, $t == "t");
    $t = 0; printf("%d %d\n", !$t, ~$t);
    printf("[%s] [%d] [%g]\n", $never, $never, $never);
  }
  return 0;
}
// turns: 3
