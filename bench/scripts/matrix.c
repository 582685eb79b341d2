double a[120][120];
double b[120][120];
double c[120][120];

int main()
{
  int i;
  int j;
  int k;
  double sum;
  for (i = 0; i < 120; i++)
    for (j = 0; j < 120; j++)
    {
      a[i][j] = i + j;
      b[i][j] = i - j;
    }
  for (i = 0; i < 120; i++)
    for (j = 0; j < 120; j++)
    {
      sum = 0;
      for (k = 0; k < 120; k++) sum = sum + a[i][k] * b[k][j];
      c[i][j] = sum;
    }
  printf("%d\n", c[17][42]);
  return 0;
}
