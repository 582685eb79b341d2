// calls: wrap(4000000000, 500000000); halve(4294967295); quotient(4294967295, 7); less(4294967295, 1); top(2147483648)
// calls: back(3, 5); hash(12345); hash(0)
// modes: -o1; -cpu32
unsigned int wrap(unsigned int a, unsigned int b) { return a + b; }
unsigned int halve(unsigned int a) { return a >> 1; }
unsigned int quotient(unsigned int a, unsigned int b) { return (a / b) + (a % b); }
int less(unsigned int a, unsigned int b) { return (a < b) * 4 + (a > b) * 2 + (a >= b); }
unsigned int top(unsigned int a) { a /= 2; a -= 1; return a; }
unsigned int back(unsigned int a, unsigned int b) { return (a - b) / 2; }
unsigned int hash(unsigned int a)
{
  unsigned int h;
  int i;
  h = 2166136261;
  for (i = 0; i < 4; i++) {
    h = h ^ (a & 255);
    h = h * 16777619;
    a >>= 8;
  }
  return h;
}
