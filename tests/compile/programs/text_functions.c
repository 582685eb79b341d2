// calls: words(); compare(); number(); palindrome()
// modes: -addr32
char line[] = "the quick  brown fox";
char digits[] = "-4711";
char radar[] = "racecar";
int words()
{
  int count; int inside; int i;
  count = 0; inside = 0; i = 0;
  while (line[i]) {
    if (line[i] == ' ') inside = 0;
    else if (!inside) { inside = 1; count++; }
    i++;
  }
  return count;
}
int order(char *a, char *b) { while (*a == *b) { if (*a == 0) return 0; a++; b++; } return *a - *b; }
int compare() { return order("abc", "abd") * 100 + order("same", "same") * 10 + order("b", "a"); }
int number() { int i; int value; int minus; i = 0; value = 0; minus = 0; if (digits[0] == '-') { minus = 1; i = 1; } while (digits[i]) { value = value * 10 + (digits[i] - '0'); i++; } return minus ? -value : value; }
int palindrome() { int n; int i; n = 0; while (radar[n]) n++; for (i = 0; i < n / 2; i++) { if (radar[i] != radar[n - 1 - i]) return 0; } return n; }
