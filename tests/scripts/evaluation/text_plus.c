// A number joins a text only beside the text of a typeless variable.
int main()
{
  int z; int i; int k; double d; char *p; char b[4]; char c;
  i = 5; d = 2.5; p = "ptr"; b[0] = 'b'; b[1] = 0; c = 200;
  for (z = 0; z < 3; z++) {
    $s = "s"; $e = "";
    printf("%s|%s|%s|%s\n", "a" + "b", p + "!", "<" + p + ">", b + p);
    printf("%s|%s|%s|%s\n", $s + i, i + $s, $s + d, $s + 1.0 / 3);
    printf("%s|%s|%s\n", $s + c, $e + 7, $s + $s + $s);
    printf("%d|%d|%d|%d\n", "a" + 1, 1 + "a", "7" + i, $s + 1 + 2);
    printf("%s|%s\n", $s + (1 + 2), $s + 1 + "x");
    $s += 1; $s += "x"; $s += 2.5; $s += d; $s += c; $s += p; printf("%s\n", $s);
    $n = 1; $n += "b"; $n += 2; printf("%s\n", $n);
    $n = 0.25; $n += $s; printf("%s\n", $n);
    $s = "ab"; $s += $s; $s = $s + $s; printf("%s\n", $s);
    i += "text"; d += "text"; printf("%d %g\n", i, d);
    $s = "x"; $t = $s; $s += "y"; printf("%s %s\n", $s, $t);
    $g = "grows"; $h = "stays"; for (k = 0; k < 40; k++) $g += "0123456789"; printf("%s %s\n", morv_substr($g, 0, 20), $h);
  }
  return 0;
}
// turns: 3
