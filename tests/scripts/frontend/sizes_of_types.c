INT8 a1; UINT8 a2; UCHAR a3; bool a4; char a5; short a6; short int a7; int a8; long a9;
long long b1; float b2; double b3; longdouble b4; INT16 b5; UINT16 b6; INT32 b7; UINT32 b8;
INT64 b9; UINT64 c1; INT128 c2; UINT128 c3; INT256 c4; UINT256 c5; wchar_t c6; unsigned c7;
unsigned short c8; unsigned char c9; unsigned long d1; unsigned int d2; unsigned short int d3;
unsigned long long d4; long int d5; long long int d6;
const int e1; static const char e2; volatile unsigned e3; char *e4; void *e5; int **e6; INT4 f1[3];
int main()
{
  unsigned short l1; longdouble l2; register int l3; static const unsigned char l4;
  printf("%d %d %d %d %d %d %d %d %d", sizeof(a1), sizeof(a2), sizeof(a3), sizeof(a4), sizeof(a5), sizeof(a6),
         sizeof(a7), sizeof(a8), sizeof(a9));
  printf("%d %d %d %d %d %d %d %d", sizeof(b1), sizeof(b2), sizeof(b3), sizeof(b4), sizeof(b5), sizeof(b6),
         sizeof(b7), sizeof(b8));
  printf("%d %d %d %d %d %d %d %d", sizeof(b9), sizeof(c1), sizeof(c2), sizeof(c3), sizeof(c4), sizeof(c5),
         sizeof(c6), sizeof(c7));
  printf("%d %d %d %d %d %d %d %d", sizeof(c8), sizeof(c9), sizeof(d1), sizeof(d2), sizeof(d3), sizeof(d4),
         sizeof(d5), sizeof(d6));
  printf("%d %d %d %d %d %d", sizeof(e1), sizeof(e2), sizeof(e3), sizeof(e4), sizeof(e5), sizeof(e6));
  printf("%d %d %d %d", sizeof(l1), sizeof(l2), sizeof(l3), sizeof(l4));
  printf("%d %d %d %d %d", sizeof(INT8), sizeof(UINT256), sizeof(unsigned short int), sizeof(unsigned long long),
         sizeof(long int));
  printf("%d %d %d %d", sizeof(int *), sizeof(char **), sizeof(unsigned int *), sizeof(void *));
  printf("%d %d %d %d %d", sizeof(BIT), sizeof(INT4), sizeof(UINT4), sizeof(f1), sizeof(INT4 *));
  return 0;
}
