int main()
{
  int i; int n;
  i = 0;
  while (1) {
    i++;
    switch (i) {
      case 1: continue;
      case 2: break;
      case 5: i = 10; break;
      default: printf("default %d\n", i);
    }
    if (i >= 10) break;
    printf("end of turn %d\n", i);
  }
  printf("%d\n", i);
  for (i = 0; i < 4; i++) {
    switch (i) { case 1: continue; case 2: { break; } }
    printf("for %d\n", i);
  }
  i = 0;
  do {
    switch (i++) { case 0: printf("zero\n"); case 1: printf("one\n"); break; case 2: continue; default: printf("%d\n", i); }
    printf("behind\n");
  } while (i < 4);
  n = 0;
  for (i = 0; i < 6; i++) switch (i % 3) { case 0: n += 1; case 1: n += 10; break; default: n += 100; }
  printf("%d\n", n);
  return 0;
}
