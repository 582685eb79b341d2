int main()
{
  int i; char c;
  printf("%g\n", (int)2.5);
  i = (int)2.9;
  printf("%d\n", i);
  printf("%d\n", (char)300);
  c = (int)65.7;
  printf("%c\n", c);
  printf("%g\n", (int)7.5 / 2);
  printf("%d\n", (double)7 / 2);
  printf("%g\n", 7 / 2.0);
  return 0;
}
