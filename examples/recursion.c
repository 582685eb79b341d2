// Recursion: towers of Hanoi, greatest common divisor, Ackermann's function, permutations.
//
//   vorc -morv -morvquiet recursion.c
//
// Each function stands above its callers, and has at least one parameter (or void), which
// gives every call a frame of its own. Loops inside recursive functions are while loops.

int moves;

// Moves a tower of disks from one peg to another, counting every move.
void hanoi(int disks, char *from, char *to, char *over)
{
  if (disks > 0) {
    hanoi(disks - 1, from, over, to);
    moves = moves + 1;
    printf("%2d. disk %d: %s -> %s\n", moves, disks, from, to);
    hanoi(disks - 1, over, to, from);
  }
}

int gcd(int a, int b)
{
  if (b == 0) return a;
  return gcd(b, a % b);
}

// Grows faster than anything that loops alone can compute. The argument of one call is another call.
int ackermann(int m, int n)
{
  if (m == 0) return n + 1;
  if (n == 0) return ackermann(m - 1, 1);
  return ackermann(m - 1, ackermann(m, n - 1));
}

// Power by squaring: about log2(n) calls.
double power(double x, int n)
{
  double half;
  if (n == 0) return 1;
  half = power(x, n / 2);
  if (n % 2 == 0) return half * half;
  return half * half * x;
}

char word[16];
int permutations;

void swap(int i, int j)
{
  char kept;
  kept = word[i];
  word[i] = word[j];
  word[j] = kept;
}

// Prints all orders of the letters from position k on, one call for each letter put at k.
void permute(int k, int length)
{
  int i;
  if (k == length) {
    permutations = permutations + 1;
    printf("%d: %s\n", permutations, word);
  }
  i = k;
  while (i < length) {
    swap(k, i);
    permute(k + 1, length);
    swap(k, i);
    i = i + 1;
  }
}

// The text of a number in any base up to 16; texts returned by a call can be joined at once.
char *digits(int n, int base)
{
  if (n < base) return morv_substr("0123456789abcdef", n, 1);
  return digits(n / base, base) + morv_substr("0123456789abcdef", n % base, 1);
}

int main()
{
  hanoi(3, "A", "C", "B");
  printf("gcd(1071, 462) = %d\n", gcd(1071, 462));
  printf("ackermann(2, 3) = %d\n", ackermann(2, 3));
  printf("1.5 to the power of 10 = %g\n", power(1.5, 10));
  word[0] = 'a'; word[1] = 'b'; word[2] = 'c';
  permute(0, 3);
  printf("2024 = %s in base 2, %s in base 16\n", digits(2024, 2), digits(2024, 16));
  return 0;
}
