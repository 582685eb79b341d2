enum { A, B = 5, C, D = -3, E, F = 'a', G = 1 << 4, H = B * 2 + C, I = sizeof(int), J = 0x20, K = (2 + 3) * 4, };
enum Color { RED, GREEN = 10, BLUE } painted, *pointer;
enum Color other;
typedef enum { ON = 1, OFF = 0 } Switch;
typedef enum Tag { T1 = 7, T2 } Tagged;
struct S { enum Color c; Switch s; int k; };
int sized[BLUE]; int table[B + 1][GREEN - 8];
enum Color pass(enum Color c) { return c; }
int main()
{
  enum Local { LA = 3, LB };
  enum Local l; Switch s; Tagged t; enum Tag g; struct S m;
  printf("%d %d %d %d %d %d %d %d %d %d %d", A, B, C, D, E, F, G, H, I, J, K);
  painted = BLUE; other = GREEN; pointer = &other; l = LB; s = ON; t = T2; g = T1;
  printf("%d %d %d %d %d %d %d", painted, other, *pointer, l, s, t, g);
  { enum Inner { MA = 9 }; enum Inner m; m = MA; printf("%d", m); }
  m.c = BLUE; m.s = OFF; m.k = 3;
  printf("%d %d %d", m.c, m.s, m.k);
  printf("%d %d %d %d", sizeof(enum Color), sizeof(Switch), sizeof(painted), sizeof(struct S));
  printf("%d %d", sizeof(sized), sizeof(table));
  switch (painted) { case RED: printf("red"); break; case BLUE: printf("blue"); break; case GREEN: printf("green"); }
  if (RED == 0 && ON) printf("in conditions");
  pass(other);
  return 0;
}
