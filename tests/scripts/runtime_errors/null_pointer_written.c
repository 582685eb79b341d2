char *gone;
int put(char *s, int n) { s[n] = 'x'; return n; }
int main()
{
  char b[4];
  printf("%d\n", put(b, 1));
  printf("%d\n", put(gone, 2));
  printf("never\n");
  return 0;
}
