int main()
{
  int i;
  int sum;
  sum = 0;
  for (i = 0; i < 500000; i++)
  {
    switch (i % 8)
    {
      case 0: sum = sum + 1; break;
      case 1: sum = sum + 3; break;
      case 2: sum = sum ^ 5; break;
      case 3: sum = sum - 7; break;
      case 4: sum = sum + 11; break;
      case 5: sum = sum ^ 13; break;
      case 6: sum = sum + 17; break;
      default: sum = sum - 2; break;
    }
  }
  printf("%d\n", sum);
  return 0;
}
