// calls: run(2); mixed(1, 2, 3)
int run(int k)
{
  int a[2][3][4]; int i; int j; int n; int s;
  for (i = 0; i < 2; i++) for (j = 0; j < 3; j++) for (n = 0; n < 4; n++) a[i][j][n] = i * 100 + j * 10 + n;
  s = 0;
  for (i = 0; i < 2; i++) for (j = 0; j < 3; j++) s += a[i][j][k];
  return s * 1000 + a[1][2][3];
}
int mixed(int i, int j, int n) { short a[2][3][4]; a[1][2][3] = 7; a[0][0][0] = 9; a[i][j][n] += 5; return a[1][2][3] * 10 + a[0][0][0]; }
