int ackermann(int m, int n)
{
  int result;
  if (m == 0)
    result = n + 1;
  else if (n == 0)
    result = ackermann(m - 1, 1);
  else
    result = ackermann(m - 1, ackermann(m, n - 1));
  return result;
}

int main()
{
  printf("%d\n", ackermann(2, 300));
  return 0;
}
