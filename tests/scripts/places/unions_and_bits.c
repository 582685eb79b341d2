union U { int i; unsigned char b[4]; float f; };
struct Flags { int low : 3; int mid : 5; int high : 8; };
union U u; struct Flags r; struct Flags many[2];
int main()
{
  int z; struct Flags here;
  for (z = 0; z < 3; z++) {
    u.i = 0x41424344; printf("%d %d %c\n", u.b[0], u.b[3], u.b[1]); u.b[0] = 'Z'; printf("%x\n", u.i); u.f = 1; printf("%x\n", u.i);
    r.low = 9; r.mid = 17; r.high = 300; printf("%d %d %d\n", r.low, r.mid, r.high);
    r.low++; r.mid += 20; r.high = r.low * 2 + r.mid; printf("%d %d %d\n", r.low, r.mid, r.high);
    r.low = 7; r.low++; printf("%d %d\n", r.low, r.mid); r.high |= 128; r.mid ^= 31; printf("%d %d\n", r.high, r.mid);
    many[1].mid = 40; here = many[1]; printf("%d %d %d\n", many[0].mid, many[1].mid, here.mid);
  }
  return 0;
}
