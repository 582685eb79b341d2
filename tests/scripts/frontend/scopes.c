int x = 1;
int shadow(int x) { { int y; y = x; { int y; y = 9; } return y; } }
int count(void) { static int n; n = n + 1; return n; }
int count_from_ten(void) { static int n = 10; n++; return n; }
int main()
{
  printf("%d", x);
  int x;
  x = 2;
  {
    int x;
    x = 3;
    { int x; x = 4; printf("%d", x); }
    printf("%d", x);
  }
  printf("%d", x);
  if (x) { int x; x = 5; printf("%d", x); }
  for (int x = 6; x < 7; x++) printf("%d", x);
  while (x == 2) { int x; x = 8; printf("%d", x); break; }
  switch (x) { case 2: { int x; x = 9; printf("%d", x); } }
  printf("%d %d", x, shadow(7));
  count(); count(); count_from_ten();
  printf("%d %d", count(), count_from_ten());
  return 0;
}
