int main()
{
  int i;
  for (i = 0; i < 6; i++) {
    switch (i) {
      case 1: continue;
      case 2: printf("two\n");
      case 3: printf("two or three\n"); break;
      case 3: printf("never: the first equal case wins\n"); break;
      default: printf("other %d\n", i);
      case 9: printf("behind default\n");
    }
    printf("end of pass %d\n", i);
    if (i == 4) break;
  }
  i = 0;
  while (i < 4) { i++; if (i == 2) continue; printf("w%d\n", i); }
  i = 0;
  do { i++; if (i < 3) continue; printf("d%d\n", i); } while (i < 4);
  switch (-1) { case -1: printf("minus one\n"); }
  switch (7) { case 1: printf("never\n"); }
  return 0;
}
