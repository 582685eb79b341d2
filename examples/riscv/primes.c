// How many primes lie below a number, for a RISC-V core. start.s begins; docs/riscv.md tells how both become a
// program.
int marked[1000];

int primes(int limit)
{
  int i; int k; int count;
  count = 0;
  for (i = 2; i < limit; i++) {
    if (marked[i] == 0) {
      count = count + 1;
      for (k = i + i; k < limit; k = k + i) marked[k] = 1;
    }
  }
  return count;
}
