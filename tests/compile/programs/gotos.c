// calls: count(5); skip(1); skip(0); out(); down(3)
// modes: -o1
int count(int n)
{
  int s;
  s = 0;
again:
  if (n == 0) goto done;
  s += n;
  n--;
  goto again;
done:
  return s;
}
int skip(int a) { int r; r = 1; if (a) goto over; r = 2; over: r = r * 10; return r; }
int out()
{
  int i; int j;
  for (i = 0; i < 10; i++) {
    for (j = 0; j < 10; j++) {
      if (i * j == 42) goto found;
    }
  }
  return -1;
found:
  return i * 10 + j;
}
int down(int n)
{
  int r;
  r = 0;
first: second:
  r += n;
  n--;
  if (n > 0) goto first;
  return r;
}
