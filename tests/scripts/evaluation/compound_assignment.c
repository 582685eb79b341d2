int main()
{
  int z; int i; long l; double d; float f;
  for (z = 0; z < 3; z++) {
    i = 7; i += 2.9; printf("%d ", i); i -= 0.5; printf("%d ", i); i *= 2.5; printf("%d ", i); i /= 4.0; printf("%d ", i);
    i %= 3.9; printf("%d\n", i);
    d = 7.75; d |= 8; printf("%g ", d); d &= 12.5; printf("%g ", d); d ^= 5; printf("%g ", d); d <<= 2; printf("%g ", d);
    d %= 8; printf("%g\n", d);
    l = 3000000000; l += l; printf("%lld ", l); l /= 0 - 7; printf("%lld ", l); l %= 1000; printf("%lld ", l);
    l <<= 33; printf("%lld ", l); l = 1; l <<= 31; printf("%lld\n", l);
    f = 0.5; f += 0.25; f *= f; printf("%g ", f); f -= 1; printf("%g\n", f);
    d = 1.5; d /= 0.0; printf("%g ", d); d = 1; d -= 2.5; d *= 0 - 2; printf("%g\n", d);
    i = 1; i += i += 2; printf("%d ", i); i /= 0 - 1; printf("%d ", i); i %= 0 - 1; printf("%d\n", i);
  }
  return 0;
}
// turns: 3
