int main()
{
  int m[3][4]; int i; int j;
  for (i = 0; i < 3; i++) for (j = 0; j < 4; j++) m[i][j] = i * 10 + j;
  printf("%d %d %d\n", m[0][3], m[1][2], m[2][0]);
  m[1][5] = 7;
  printf("%d\n", m[2][1]);
  return 0;
}
