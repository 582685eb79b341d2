// calls: crc(1); adler(); xorshift(1)
// modes: -o1
UCHAR data[9] = {0x31, 0x32, 0x33, 0x34, 0x35, 0x36, 0x37, 0x38, 0x39};
unsigned int crc(int unused)
{
  unsigned int c; int i; int k;
  c = 0xFFFFFFFF;
  for (i = 0; i < 9; i++) {
    c = c ^ data[i];
    for (k = 0; k < 8; k++) {
      if (c & 1) c = (c >> 1) ^ 0xEDB88320;
      else c = c >> 1;
    }
  }
  return ~c;
}
unsigned int adler() { unsigned int a; unsigned int b; int i; a = 1; b = 0; for (i = 0; i < 9; i++) { a = (a + data[i]) % 65521; b = (b + a) % 65521; } return (b << 16) | a; }
UINT64 xorshift(UINT64 x) { int i; for (i = 0; i < 10; i++) { x = x ^ (x << 13); x = x ^ (x >> 7); x = x ^ (x << 17); } return x; }
