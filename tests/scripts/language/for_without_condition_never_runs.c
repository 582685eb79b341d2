int calls;
int step(void) { calls = calls + 1; return calls; }
int main()
{
  int i;
  for (;;) printf("never\n");
  for (i = 5; ; i++) printf("never\n");
  printf("first clause ran: %d\n", i);
  for (; step() < 3;) printf("turn %d\n", calls);
  printf("conditions: %d\n", calls);
  while (1) { printf("while runs\n"); break; }
  return 0;
}
