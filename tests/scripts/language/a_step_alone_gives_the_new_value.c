// The stored step runs before a lone variable is read: as a subscript, an argument, a condition.
int main()
{
  int b[5]; int n; int i;
  for (i = 0; i < 5; i++) b[i] = 0;
  n = 0;
  b[n++] = 65;
  printf("%d %d %d\n", n, b[0], b[1]);
  printf("%d\n", n++);
  printf("%d\n", n++ + 0);
  n = 3;
  while (n--) printf("%d\n", n);
  n = 3;
  while (n-- > 0) printf("%d\n", n);
  i = (n++);
  printf("%d %d\n", i, n);
  return 0;
}
