INT64 g;
int main()
{
  INT64 w; int i;
  w = 2147483647; w += 1;
  printf("%lld\n", w);
  w *= 4;
  printf("%lld\n", w);
  w -= 1;
  printf("%lld\n", w);
  w ^= 1; w |= 8; w &= 15;
  printf("%lld\n", w);
  w = 1; w <<= 35;
  printf("%lld\n", w);
  w = 1000000; w *= 1000000; w >>= 1;
  printf("%lld\n", w);
  w = 1000000; w *= 1000000;
  w = w + 0;
  printf("%lld\n", w);
  i = 2147483647; i += 1;
  printf("%d\n", i);
  i = 17; i %= 5; printf("%d\n", i);
  i = 7; i *= 1.5; printf("%d\n", i);
  i = 7; i -= 0.5; printf("%d\n", i);
  g = 3; g *= g; g *= g; g *= g; g *= g; g *= g;
  printf("%lld\n", g);
  return 0;
}
