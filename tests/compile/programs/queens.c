// calls: solve(6); solve(5)
int column[10];
int safe(int row, int at)
{
  int i; int d;
  for (i = 0; i < row; i++) {
    d = column[i] - at;
    if (d == 0 || d == row - i || d == i - row) return 0;
  }
  return 1;
}
int place(int row, int n)
{
  int at; int found;
  if (row == n) return 1;
  found = 0;
  for (at = 0; at < n; at++) {
    if (safe(row, at)) { column[row] = at; found += place(row + 1, n); }
  }
  return found;
}
int solve(int n) { return place(0, n); }
