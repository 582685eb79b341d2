// A loop that once ended in return carries the mark into the next call and ends the function.
int first(int stop)
{
  int i;
  for (i = 0; i < 5; i++) { if (i == stop) return i; }
  return 99;
}
int main()
{
  printf("%d\n", first(50));
  printf("%d\n", first(2));
  $r = first(50);
  printf("the function ended behind its loop: %d\n", $r != 99);
  return 0;
}
