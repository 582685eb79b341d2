// Prime numbers by the sieve of Eratosthenes, and a few facts about them.
//
//   vorc -morv -morvquiet sieve.c [limit]

#define MOST 20000

// Large arrays stand at file level: there they take just their bytes, while a local array
// would take eight times as much of the script's stack.
char composite[MOST + 1];

int sieve(int limit)
{
  int n; int multiple; int count;
  count = 0;
  for (n = 2; n <= limit; n++) {
    if (composite[n] == 0) {
      count = count + 1;
      // 46341 squared would not fit 32 bits any more; MOST stays far below that.
      for (multiple = n * n; multiple <= limit; multiple += n) composite[multiple] = 1;
    }
  }
  return count;
}

// Prints the primes up to a limit, ten in a row.
void show(int limit)
{
  int n; int in_row;
  $row = "";
  in_row = 0;
  for (n = 2; n <= limit; n++) {
    if (composite[n] == 0) {
      // Each printf is a line of its own, so a row is collected first.
      if (n < 10) $row += "   ";
      else if (n < 100) $row += "  ";
      else $row += " ";
      $row += n;
      in_row = in_row + 1;
      if (in_row == 10) { printf("%s\n", $row); $row = ""; in_row = 0; }
    }
  }
  if (in_row > 0) printf("%s\n", $row);
}

int largest_gap(int limit)
{
  int n; int last; int gap;
  last = 2; gap = 0;
  for (n = 3; n <= limit; n++) {
    if (composite[n] == 0) {
      if (n - last > gap) gap = n - last;
      last = n;
    }
  }
  return gap;
}

int twins(int limit)
{
  int n; int count;
  count = 0;
  // A bare composite[n] beside && would decide alone; a comparison makes it an ordinary operand.
  for (n = 3; n + 2 <= limit; n++)
    if (composite[n] == 0 && composite[n + 2] == 0) count = count + 1;
  return count;
}

int main()
{
  int limit;
  limit = morv_atoi(morv_getparam("1"));
  if (limit < 2 || limit > MOST) limit = 10000;
  printf("%d primes up to %d\n", sieve(limit), limit);
  show(limit < 200 ? limit : 200);
  printf("largest gap: %d\n", largest_gap(limit));
  printf("twins: %d\n", twins(limit));
  return 0;
}
