// calls: plain(1); plain(2); plain(3); plain(9); through(0); through(1); through(2); through(5); group(3); group(4); group(8)
// calls: early(1); early(7); negative(-3); negative(3); inner(1, 2); inner(2, 1)
// modes: -o1; -cpu32
int plain(int a) { int r; switch (a) { case 1: r = 10; break; case 2: r = 20; break; case 3: r = 30; break; default: r = -1; } return r; }
int through(int a) { int r; r = 0; switch (a) { case 0: r += 1; case 1: r += 10; case 2: r += 100; break; default: r = 7; } return r; }
int group(int a) { switch (a) { case 1: case 2: case 3: return 100; case 4: return 200; } return 300; }
int early(int a) { int r; r = 1; switch (a) { default: r = 50; break; case 1: r = 60; } return r; }
int negative(int a) { switch (a) { case -3: return 1; case 0x10: return 2; case 'c': return 3; } return 4; }
int inner(int a, int b)
{
  int r;
  r = 0;
  switch (a) {
    case 1:
      switch (b) { case 1: r = 11; break; case 2: r = 12; break; }
      r += 100;
      break;
    case 2:
      r = 20;
  }
  return r;
}
