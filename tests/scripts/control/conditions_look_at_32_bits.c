int tell(double d) { if (d) return 1; return 0; }
int main()
{
  long l; double d; float f; char *s; int n; char c;
  printf("%d %d %d %d\n", tell(1), tell(0.5), tell(0.1), tell(0));
  if (0.5) printf("half\n"); else printf("no half\n");
  if (0.1) printf("tenth\n"); else printf("no tenth\n");
  f = 0.1; if (f) printf("float tenth\n"); f = 2; if (f) printf("float two\n"); else printf("no float two\n");
  l = 4294967296; if (l) printf("long\n"); else printf("no long\n");
  l += 2; switch (l) { case 2: printf("case of the low half\n"); break; default: printf("other\n"); }
  s = "abc"; if (s) printf("text\n"); else printf("text is false\n");
  if ("literal") printf("literal\n"); else printf("literal is false\n");
  n = 0; d = 2.0; while (d) { n++; d = 0.0; } printf("%d\n", n);
  d = 0.1; while (d) { n++; d = 0.0; } printf("%d\n", n);
  d = 4.0; do n++; while (d); printf("%d\n", n);
  for (d = 1.0; d; d = 0.0) n = 99; printf("%d\n", n);
  if (d + 1 && 1) printf("logic looks at the type\n");
  switch (d) { case 0: printf("zero\n"); }
  d = 2.0; switch (d) { case 2: printf("two\n"); break; case 0: printf("low half of 2.0\n"); }
  c = 0 - 1; switch (c) { case -1: printf("-1\n"); break; case 255: printf("255\n"); }
  return 0;
}
