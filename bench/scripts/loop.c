int main()
{
  int i;
  int sum;
  sum = 0;
  for (i = 0; i < 3000000; i++)
  {
    sum = sum + i % 7 * 3;
    sum = sum ^ i;
  }
  printf("%d\n", sum);
  return 0;
}
