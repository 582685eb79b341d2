struct Reg { int low : 3; int mid : 5; int high : 20; int next : 30; };
union Word { int whole; char byte[4]; };
struct Reg r;
int main()
{
  union Word w;
  r.low = 9; r.mid = 17; r.high = 70000; r.next = 5;
  printf("%d %d %d %d\n", r.low, r.mid, r.high, r.next);
  printf("%d\n", sizeof(struct Reg));
  w.whole = 16909060;
  printf("%d %d %d\n", w.byte[0], w.byte[3], sizeof(union Word));
  w.byte[0] = 255;
  printf("%d\n", w.whole);
  return 0;
}
