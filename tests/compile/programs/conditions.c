// calls: sign(5); sign(-5); sign(0); bare(0); bare(9); not(0); not(4); between(5, 1, 10); between(11, 1, 10); nested(3, 3); nested(4, 2)
// modes: -o1; -cpu32
int sign(int a) { if (a > 0) return 1; else if (a < 0) return -1; return 0; }
int bare(int a) { if (a) return 10; return 20; }
int not(int a) { if (!a) return 10; return 20 + !a + !!a; }
int between(int a, int low, int high) { if ((a >= low) && (a <= high)) return 1; return 0; }
int nested(int a, int b)
{
  int r;
  r = 0;
  if (a == b) { if (a > 2) r = 1; else r = 2; }
  else { if (a > b) { r = 3; } else { r = 4; } r += 10; }
  return r;
}
