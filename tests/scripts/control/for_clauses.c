int main()
{
  int i; int j; int n;
  for (i = 0; i < 3, j < 5; i++) { j = i * 2; printf("%d %d\n", i, j); }
  for (i = 0, j = 9; i < 2, j > 6; i++, j--) printf("%d-%d\n", i, j);
  n = 0; for (;;) n++; for (i = 0; ; i++) n++; printf("%d\n", n);
  for (i = 0; i < 2;) { i++; printf("i%d\n", i); }
  for (; i < 4; i++) ;
  printf("%d\n", i);
  for (int k = 0; k < 2; k++) printf("k%d\n", k);
  for (i = 0; i < 0; i++) printf("never\n");
  for (i = 3; i--; ) printf("down %d\n", i);
  for (i = 1; i < 100; i *= 3) printf("%d ", i);
  for (i = 0, n = 0; n = i < 3; i++) ;
  printf("%d %d\n", i, n);
  return 0;
}
