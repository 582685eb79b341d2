int main()
{
  int i; int j;
  for (i = 0; i < 4; i++) {
    if (i == 0) printf("zero\n"); else if (i == 1) printf("one\n"); else if (i == 2) { printf("two\n"); } else printf("many\n");
  }
  if (1) if (0) printf("never\n"); else printf("belongs to the inner if\n");
  if (0) { if (1) printf("never\n"); } else printf("belongs to the outer if\n");
  if (0) ; else printf("empty arm\n");
  if (i = 0) printf("never\n"); else printf("assigned %d\n", i);
  if (i++) printf("stepped: %d\n", i); else printf("never\n");
  if (i == 1 && (j = 3)) printf("%d\n", j);
  if (i != 1 && (j = 4)) printf("never\n"); else printf("both sides ran: %d\n", j);
  return 0;
}
