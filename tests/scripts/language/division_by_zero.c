int main()
{
  double d; int i;
  d = 2.0;
  d /= 0.0;
  printf("%g %d\n", d, d > 1000000.0);
  printf("%d\n", 1);
  i = 7;
  i /= 0;
  printf("never\n");
  return 0;
}
