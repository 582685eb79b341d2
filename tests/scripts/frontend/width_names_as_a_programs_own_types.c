typedef int INT32; typedef char INT8; typedef struct { int a; } UINT64; typedef UINT64 *UINT128;
INT32 g; UINT64 h;
int f(INT8 c, UINT128 p) { return p->a + c; }
int main()
{
  INT32 x; INT8 c; UINT64 s;
  x = 1; c = 2; s.a = 3; h.a = 4;
  printf("%d %d %d %d", x, c, s.a, h.a);
  printf("%d %d %d %d", sizeof(INT32), sizeof(INT8), sizeof(UINT64), sizeof(UINT128));
  printf("%d %d", (INT32)x, f(c, &s));
  printf("%d", sizeof(INT16));
  return 0;
}
