// calls: count(100); count(2)
// modes: -o1; -cpu32 -o1
char crossed[200];
int count(int n)
{
  int i; int j; int found;
  for (i = 0; i <= n; i++) crossed[i] = 0;
  found = 0;
  for (i = 2; i <= n; i++) {
    if (crossed[i]) continue;
    found++;
    for (j = i * i; j <= n; j += i) crossed[j] = 1;
  }
  return found;
}
