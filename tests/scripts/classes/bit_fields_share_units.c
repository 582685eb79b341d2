struct B { int x : 3; int y : 5; int z : 30; long w : 10; INT32 q : 4; int plain; };
struct C { int a : 1; int b : 2; int c : 3; char t; int d : 4; };
struct F { int full : 32; int next : 1; };
#define WIDTH 4
struct M { int a : WIDTH; int b : 28; };
struct R { int en : 1; int mode : 3; int div : 12; int rest : 16; };
struct R r; struct R ra[2];
int main()
{
  struct B b; struct C c;
  printf("%d %d %d %d %d", sizeof(struct B), sizeof(struct C), sizeof(struct F), sizeof(struct M), sizeof(struct R));
  b.x = 2; b.y = 9; b.z = 12345; b.w = 100; b.q = 3; b.plain = 44;
  printf("%d %d %d %d %d %d", b.x, b.y, b.z, b.w, b.q, b.plain);
  c.a = 1; c.b = 2; c.c = 3; c.t = 'a'; c.d = 5;
  printf("%d %d %d %d %d", c.a, c.b, c.c, c.t, c.d);
  c.b = 1; printf("%d %d %d", c.a, c.b, c.c);
  c.b += 1; c.c++; printf("%d %d %d", c.a, c.b, c.c);
  r.en = 1; r.mode = 5; r.div = 2000; r.rest = 0x1234;
  printf("%d %d %d %d", r.en, r.mode, r.div, r.rest);
  r.div -= 1; r.rest++; printf("%d %d %d %d", r.en, r.mode, r.div, r.rest);
  ra[1].div = 5; ra[0].div = 6; printf("%d %d %d", ra[1].div, ra[0].div, ra[1].en);
  return 0;
}
