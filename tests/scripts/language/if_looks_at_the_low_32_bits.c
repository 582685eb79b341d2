// A condition sees the low half of the value: doubles and texts fall through, comparisons don't.
double d; char *s; long l;
int main()
{
  d = 0.5;
  if (d) printf("half: true\n"); else printf("half: false\n");
  if (d != 0) printf("half differs from 0\n");
  d = 1.0;
  if (d) printf("one: true\n"); else printf("one: false\n");
  d = 0.1;
  if (d) printf("a tenth: true\n"); else printf("a tenth: false\n");
  s = "text";
  if (s) printf("text: true\n"); else printf("text: false\n");
  $t = "text";
  if ($t) printf("dollar text: true\n"); else printf("dollar text: false\n");
  if (!(!$t)) printf("but not empty\n");
  l = 65536; l *= 65536;
  while (l) { printf("never\n"); l = 0; }
  if (l != 0) printf("never\n");
  l += 1;
  if (l) printf("low bit: true\n");
  $n = 3;
  while ($n) { printf("%d\n", $n); $n = $n - 1; }
  return 0;
}
