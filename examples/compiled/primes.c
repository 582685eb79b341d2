// calls: count_primes(1000); nth_prime(100)
// A sieve in memory, and a search on top of it.

char composite[10000];

int count_primes(int limit)
{
  int n;
  int multiple;
  int count;
  count = 0;
  for (n = 2; n < limit; n++) {
    if (composite[n]) continue;
    count++;
    for (multiple = n * n; multiple < limit; multiple += n) composite[multiple] = 1;
  }
  return count;
}

int nth_prime(int wanted)
{
  int n;
  count_primes(10000);
  for (n = 2; n < 10000; n++) {
    if (composite[n]) continue;
    if (--wanted == 0) return n;
  }
  return -1;
}
