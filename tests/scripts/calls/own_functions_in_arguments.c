// In arguments of a script's own functions `+` never joins and compound assignments do nothing.
int n;
function id($x) { return $x; }
int side(int a) { n = n * 10 + a; return a; }
int sum(int a, int b, int c) { return a + b + c; }
int main()
{
  int z; int i;
  for (z = 0; z < 3; z++) {
    $s = "s"; i = 5;
    printf("%s %s %s\n", id("a" + "b"), id($s), id(morv_concat("a", "b")));
    printf("%d ", id(i += 3)); printf("%d\n", i);
    printf("%d ", id(i = 9)); printf("%d ", i); printf("%d ", id(i++)); printf("%d\n", id(--i));
    n = 0; printf("%d ", sum(side(1), side(2), side(3))); printf("%d\n", n);
    n = 0; printf("%d ", sum(side(1), sum(side(2), side(3), side(4)), side(5))); printf("%d\n", n);
    n = 0; side(1) && side(0) && side(2); side(3) || side(4); printf("%d\n", n);
    printf("%s\n", id(i == 9 ? "nine" : "other"));
    printf("%s\n", id(id(id("deep"))));
    printf("%s\n", morv_concat("x" + "y", $s + 1, id("z") + "!"));
  }
  return 0;
}
// turns: 3
