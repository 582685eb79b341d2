// calls: run(12); states(20); leaving(9)
// modes: -o1
int run(int n)
{
  int i; int s;
  s = 0;
  for (i = 0; i < n; i++) {
    switch (i % 4) {
      case 0: s += 1; break;
      case 1: continue;
      case 2: s += 100;
      default: s += 10000;
    }
    s += 1000000;
  }
  return s;
}
int states(int n)
{
  int state; int steps;
  state = 0;
  steps = 0;
  while (state != 3) {
    switch (state) {
      case 0: state = n > 10 ? 1 : 2; break;
      case 1: n -= 3; if (n < 10) state = 2; break;
      case 2: state = 3; break;
    }
    steps++;
  }
  return steps * 100 + n;
}
int leaving(int n) { int i; i = 0; do { switch (i) { case 4: return i * 100 + n; default: i++; } } while (i < n); return -1; }
