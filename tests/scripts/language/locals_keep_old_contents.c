int set(int v) { int x; x = v; return x; }
int get(int unused) { int x; return x; }
int fill(int v) { char b[40]; int i; for (i = 0; i < 40; i++) b[i] = v; return b[39]; }
int main()
{
  set(1234);
  printf("%d\n", get(0));
  printf("%d\n", fill(7));
  return 0;
}
