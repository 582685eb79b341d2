int main()
{
  int x; double d;
  x = 5; d = 2.5;
  printf("%d\n", x ? 1 : 2);
  printf("%d\n", (x != 0) ? 1 : 2);
  printf("%d\n", x > 3 ? 1 : 2);
  printf("%d\n", (x) ? 1 : 2);
  printf("%d\n", x + 0 ? 1 : 2);
  printf("%d\n", !x ? 1 : 2);
  printf("%d\n", 0.5 ? 1 : 2);
  printf("%d\n", d * 1 ? 1 : 2);
  printf("%s\n", x == 5 ? "five" : "other");
  x = x == 5 ? x < 3 ? 10 : 20 : 30;
  printf("%d\n", x);
  x = 1 ? 2 : 3;
  printf("%d\n", x);
  return 0;
}
