int mix(int a, int b, int c, int d) { return a + b * 2 - c + (d & 7); }

int main()
{
  int i;
  int sum;
  sum = 0;
  for (i = 0; i < 500000; i++) sum = sum + mix(i, 3, sum & 255, i);
  printf("%d\n", sum & 65535);
  return 0;
}
