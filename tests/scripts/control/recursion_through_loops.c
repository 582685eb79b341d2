// Statements are marked in the program itself, not in an activation.
int depth;
int down(int n)
{
  int i;
  printf("in %d\n", n);
  i = 0;
  while (i < 2) { i++; if (n > 0) down(n - 1); if (i == 1) continue; }
  return n;
}
int leave(int n)
{
  while (1) { if (n == 0) return 100; n = leave(n - 1); return n + 1; }
}
int tree(int n)
{
  if (n < 2) { return n; }
  { return tree(n - 1) + tree(n - 2); }
}
int main()
{
  down(2);
  printf("%d %d\n", leave(3), leave(0));
  printf("%d\n", tree(12));
  return 0;
}
