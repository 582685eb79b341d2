int whole; char small; short half; float f; double d; INT64 wide; UCHAR u;
int main()
{
  whole = 2.9; printf("%d\n", whole);
  whole = 0 - 2.9; printf("%d\n", whole);
  small = 321; printf("%d\n", small);
  half = 70000; printf("%d\n", half);
  d = 7; printf("%g\n", d / 2);
  d = whole; printf("%g\n", d);
  f = 0.1; d = f; printf("%.9f\n", d);
  f = 3; printf("%g\n", f / 2);
  wide = 0 - 5; printf("%lld\n", wide);
  wide = 3000000000.0; printf("%lld\n", wide);
  u = 255; u += 1; printf("%d\n", u);
  u = 200; u += 100; printf("%d\n", u);
  d = 1; d += 0.5; d *= 4; d -= 1; d /= 2; printf("%g\n", d);
  whole = 10; whole /= 4; printf("%d\n", whole);
  whole = 10; whole /= 4.0; printf("%d\n", whole);
  return 0;
}
