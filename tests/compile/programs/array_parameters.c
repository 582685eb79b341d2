// calls: run(); sort(); through(); text()
// modes: -addr32
int sum(int a[], int n) { int i; int s; s = 0; for (i = 0; i < n; i++) s += a[i]; return s; }
void fill(int *a, int n) { int i; for (i = 0; i < n; i++) a[i] = (n - i) * 3 % 7; }
int data[6] = {4, 8, 15, 16, 23, 42};
int run() { int local[3]; local[0] = 1; local[1] = 2; local[2] = 4; return sum(data, 6) * 10 + sum(local, 3); }
int sort()
{
  int a[8]; int i; int j; int t; int code;
  fill(a, 8);
  for (i = 0; i < 7; i++)
    for (j = 0; j < 7 - i; j++)
      if (a[j] > a[j + 1]) { t = a[j]; a[j] = a[j + 1]; a[j + 1] = t; }
  code = 0;
  for (i = 0; i < 8; i++) code = code * 7 + a[i];
  return code;
}
int pass(int a[], int n) { return sum(a, n) + sum(a, n - 1); }
int through() { return pass(data, 5); }
int length(char s[]) { int n; n = 0; while (s[n]) n++; return n; }
int text() { char s[5]; s[0] = 'a'; s[1] = 'b'; s[2] = 0; return length(s); }
