int last;
int none(int n) { last = n; }
void bare(int n) { if (n > 1) return; last = n; }
int main()
{
  none(5);
  printf("%d\n", last);
  bare(1); printf("%d\n", last);
  bare(2); printf("%d\n", last);
  return 0;
}
