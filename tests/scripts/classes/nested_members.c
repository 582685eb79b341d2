struct In { char c; int v[3]; };
struct Out {
  int a; struct In in; struct In arr[2];
  struct { int x; int y; } anon;
  union { int i; char ch[4]; } u;
  struct In *p;
};
struct Out g; struct Out ga[3];
int main()
{
  struct Out o; struct Out *p; struct In other; int i;
  o.a = 1; o.in.c = 'c'; o.in.v[2] = 5; o.arr[1].v[0] = 7; o.arr[0].c = 'z';
  o.anon.x = 8; o.anon.y = 9; o.u.i = 0x41424344;
  printf("%d %d %d %d %d %d %d", o.a, o.in.c, o.in.v[2], o.arr[1].v[0], o.arr[0].c, o.anon.x, o.anon.y);
  printf("%d %d", o.u.ch[0], o.u.ch[3]);
  p = &o; p->a = 11; p->in.v[1] = 12; p->arr[1].c = 'q';
  printf("%d %d %d", o.a, o.in.v[1], o.arr[1].c);
  o.p = &other; other.c = 'k'; o.p->v[2] = 33;
  printf("%d %d %d", o.p->c, other.v[2], p->p->c);
  i = 1; ga[i].in.v[i + 1] = 21; ga[2].a = 5; ga[i - 1].a = 4;
  ga[i].arr[i].v[i] = 22; ga[i].arr[i].v[i]++; ga[i].arr[i].v[i] += 2;
  printf("%d %d %d %d %d", ga[1].in.v[2], ga[2].a, ga[0].a, ga[1].a, ga[1].arr[1].v[1]);
  p = &g; p->a = 3; printf("%d", g.a);
  p = &ga[2]; printf("%d", p->a);
  printf("%d %d %d", sizeof(struct In), sizeof(struct Out), sizeof(ga));
  return 0;
}
