// A break leaves its mark on the body: entered again, the loop stops after one pass. The statement
// behind the loop is left out only in the pass in which the break ran.
int count(int stop)
{
  int i; int n;
  n = 0;
  for (i = 0; i < 10; i++) { n = n + 1; if (i == stop) break; }
  return n;
}
int main()
{
  int i; int j; int n;
  for (i = 0; i < 3; i++) {
    n = 0;
    for (j = 0; j < 4; j++) { n = n + 1; if (j == 2) break; }
    printf("behind the loop: %d %d\n", i, n);
  }
  printf("i=%d n=%d\n", i, n);
  printf("%d\n", count(99));
  printf("%d\n", count(3));
  printf("%d\n", count(99));
  printf("%d\n", count(99));
  return 0;
}
