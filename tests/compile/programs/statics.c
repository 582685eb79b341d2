// calls: next(); next(); next(); other(); other(); shared(5); shared(6)
// modes: -o1
int next() { static int n; n = n + 1; return n; }
int other() { static int n = 40; n += 2; return n; }
int shared(int a) { static int last = 3; int before; before = last; last = a; return before * 100 + last; }
