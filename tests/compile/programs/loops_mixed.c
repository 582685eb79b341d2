// calls: primes(50); triangle(6); search(7); search(99)
// modes: -o1
int primes(int n)
{
  int count; int i; int j; int prime;
  count = 0;
  for (i = 2; i < n; i++) {
    prime = 1;
    j = 2;
    while (j * j <= i) {
      if (i % j == 0) { prime = 0; break; }
      j++;
    }
    if (prime) count++;
  }
  return count;
}
int triangle(int n)
{
  int i; int s; int j;
  s = 0;
  for (i = 0; i < n; i++) {
    j = i;
    do { s += j; j--; if (j == 2) continue; s += 1; } while (j >= 0);
  }
  return s;
}
int search(int wanted)
{
  int i; int j; int found;
  found = -1;
  for (i = 0; i < 5; i++) {
    for (j = 0; j < 5; j++) {
      if (i * 5 + j == wanted) { found = i * 10 + j; break; }
    }
    if (found >= 0) break;
  }
  return found;
}
