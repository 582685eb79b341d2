int main()
{
  int i; int after_for; int after_do; int after_while;
  after_for = 0; after_do = 0; after_while = 0;
  { for (i = 0; i < 5; i++) { if (i == 2) break; } after_for = 1; }
  { i = 0; do { i++; if (i == 2) break; } while (i < 5); after_do = 1; }
  { i = 0; while (i < 5) { i++; if (i == 2) break; } after_while = 1; }
  printf("%d %d %d\n", after_for, after_do, after_while);
  for (i = 0; i < 5; i++) { if (i == 3) break; }
  printf("at the top of a function the next statement runs: %d\n", i);
  if (i == 3) { for (i = 0; i < 5; i++) if (i == 1) break; printf("skipped\n"); }
  printf("i=%d\n", i);
  return 0;
}
