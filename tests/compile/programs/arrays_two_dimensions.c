// calls: fill(); matrix(2); constant(1); rows()
// modes: -o1
int grid[3][4] = {{1, 2, 3, 4}, {5, 6, 7, 8}, {9}};
int fill() { int a[3][4]; int i; int j; for (i = 0; i < 3; i++) for (j = 0; j < 4; j++) a[i][j] = i * 10 + j; return a[0][3] * 10000 + a[2][0] * 100 + a[1][2]; }
int matrix(int k)
{
  int a[2][2]; int b[2][2]; int c[2][2]; int i; int j; int n;
  a[0][0] = 1; a[0][1] = k; a[1][0] = 3; a[1][1] = 4;
  b[0][0] = 5; b[0][1] = 6; b[1][0] = 7; b[1][1] = k + 6;
  for (i = 0; i < 2; i++)
    for (j = 0; j < 2; j++) {
      c[i][j] = 0;
      for (n = 0; n < 2; n++) c[i][j] = c[i][j] + a[i][n] * b[n][j];
    }
  return c[0][0] * 1000000 + c[0][1] * 10000 + c[1][0] * 100 + c[1][1];
}
int constant(int i) { char a[2][3]; a[0][0] = 1; a[1][2] = 60; a[i][1] = 70; return a[0][0] + a[1][2] + a[1][1]; }
int rows() { int i; int s; s = 0; for (i = 0; i < 3; i++) s = s * 10 + grid[i][0] + grid[i][3]; grid[2][3] = 5; return s + grid[2][3] * 1000; }
