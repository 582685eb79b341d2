enum { A, B, C };
#define NINE 9
int f(int v)
{
  switch (v) {
    case A: return 10;
    case B:
    case C: { int t; t = v * 2; return t; }
    case 'x': return 20;
    case -1: return 30;
    case 1 + 4: return 40;
    case 0x10: return 50;
    case sizeof(int) + 3: return 60;
    case NINE: return 70;
    case (1 << 6) | 1: return 80;
    default: return 90;
  }
}
int main()
{
  printf("%d %d %d %d %d", f(A), f(B), f(C), f('x'), f(-1));
  printf("%d %d %d %d %d %d", f(5), f(16), f(7), f(9), f(65), f(66));
  return 0;
}
