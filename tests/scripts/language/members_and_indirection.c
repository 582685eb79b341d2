struct In { int a; char b; };
struct Out { char tag; struct In in; int n[3]; };
struct Out g = {7, {1, 2}, {10, 20, 30}};
int main()
{
  struct Out o; struct Out *p; struct Out many[3]; int i; int *q; int **qq; char *names[3];
  printf("%d %d %d %d\n", g.tag, g.in.a, g.in.b, g.n[2]);
  o = g;
  o.in.a = 100;
  printf("%d %d\n", o.in.a, g.in.a);
  p = &o;
  p->in.b = 9; p->n[1] = 21;
  printf("%d %d %d\n", o.in.b, o.n[1], p->n[2]);
  for (i = 0; i < 3; i++) { many[i].in.a = i * i; many[i].n[i] = i + 50; }
  printf("%d %d %d\n", many[1].in.a, many[2].in.a, many[2].n[2]);
  p = &many[1];
  printf("%d\n", p->n[1]);
  i = 5;
  q = &i; *q = *q + 1;
  printf("%d %d\n", i, *q);
  qq = &q; **qq = 9;
  printf("%d\n", i);
  names[0] = "zero"; names[1] = "one"; names[2] = "two";
  printf("%s %c\n", names[1], names[2][1]);
  printf("%d %d %d\n", sizeof(struct In), sizeof(struct Out), sizeof(names));
  return 0;
}
