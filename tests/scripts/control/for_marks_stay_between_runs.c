int search(int n)
{
  int i;
  for (i = 0; i < n; i++) { if (i == 2) return i; }
  return 0 - 1;
}
int passes(int n)
{
  int i; int count;
  count = 0;
  for (i = 0; i < 5; i++) { count++; if (i == n) break; }
  return count;
}
int skips(int n)
{
  int i; int count;
  count = 0;
  for (i = 0; i < 5; i++) { if (i < n) continue; count++; }
  return count;
}
int main()
{
  int i; int j; int n;
  // The first search leaves its mark; later ones end behind one pass, without a result of their own.
  printf("%d\n", search(9)); printf("%d\n", search(9)); printf("%d\n", search(1));
  printf("%d\n", passes(3)); printf("%d\n", passes(9));
  printf("%d\n", skips(3)); printf("%d\n", skips(1));
  n = 0;
  for (i = 0; i < 3; i++) for (j = 0; j < 3; j++) { n++; if (j == 1) continue; }
  printf("%d\n", n);
  n = 0; i = 0;
  while (i < 3) { i++; for (j = 0; j < 4; j++) { n++; if (j == 2) break; } n = n + 100; }
  printf("%d\n", n);
  return 0;
}
