int main()
{
  int i; int n;
  n = 0;
  while (n < 5) {
    n++;
    i = 10 % (3 - n);
    printf("%d\n", i);
  }
  return 0;
}
