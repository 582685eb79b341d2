// What a parenthesis or an argument hands on is the same in the first turn and in later ones.
int wide(long n) { printf("%lld\n", n); return 0; }
int main()
{
  int z; unsigned int u; UINT32 v; long l; long m;
  u = 0 - 1; v = 0 - 1;
  for (z = 0; z < 3; z++) {
    l = u; m = (u); printf("%d\n", l == m); printf("%lld %lld\n", l, m);
    l = (v); printf("%lld\n", l);
    $t = (u); printf("%d\n", $t);
    wide(u); wide((v));
  }
  return 0;
}
// turns: 3
