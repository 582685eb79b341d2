int shares() { int x = 1; return x; }
int own(void) { int x = 1; return x; }
int with(int unused) { int x = 1; return x; }
int main()
{
  int y; int z;
  y = 7; z = 8;
  own(); printf("%d %d\n", y, z);
  with(0); printf("%d %d\n", y, z);
  shares(); printf("%d %d\n", y, z);
  return 0;
}
