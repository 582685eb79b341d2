char composite[1000001];

int main()
{
  int i;
  int j;
  int count;
  count = 0;
  for (i = 2; i <= 1000000; i++)
  {
    if (composite[i] == 0)
    {
      count++;
      if (i <= 1000)
        for (j = i * i; j <= 1000000; j = j + i) composite[j] = 1;
    }
  }
  printf("%d\n", count);
  return 0;
}
