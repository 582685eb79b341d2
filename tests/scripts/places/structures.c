struct Inner { int a; double d; char t[6]; };
struct Node { int v; struct Node *next; struct Inner in; struct Node *kids[2]; int m[2][3]; };
struct Node first; struct Node second; struct Node third; struct Node *head; struct Node list[3]; struct Node *table[2];
int walk(struct Node *p) { int s; s = 0; while (p) { s = s * 10 + p->v; p = p->next; } return s; }
int touch(struct Node *p, int n) { p->v = n; p->in.a += n; return p->in.a; }
int main()
{
  int z; int i; struct Node here; struct Node *p; struct Inner in;
  for (z = 0; z < 3; z++) {
    first.v = 1; second.v = 2; third.v = 3; first.next = &second; second.next = &third; third.next = 0; head = &first;
    printf("%d %d %d\n", walk(head), head->next->v, head->next->next->v);
    head->next->next->v = 9; printf("%d\n", third.v);
    first.in.a = 300; first.in.d = 0.5; first.in.t[0] = 'i'; first.in.t[1] = 0; printf("%d %g %s\n", head->in.a, head->in.d, head->in.t);
    for (i = 0; i < 3; i++) { list[i].v = i * i; list[i].in.a = 0 - i; list[i].m[1][2] = i; }
    printf("%d %d %d\n", list[2].v, list[1].in.a, list[2].m[1][2]);
    i = 1; list[i].v += 10; list[i + 1].v++; --list[0].v; printf("%d %d %d\n", list[0].v, list[1].v, list[2].v);
    p = &list[1]; p->v *= 2; p->m[0][1] = 5; p->in.d = p->v / 4.0; printf("%d %d %g\n", list[1].v, list[1].m[0][1], list[1].in.d);
    head->kids[1] = &third; head->kids[0] = head; printf("%d %d\n", head->kids[1]->v, head->kids[0]->kids[1]->v);
    table[1] = &second; table[1]->v += 40; printf("%d\n", second.v);
    here = list[1]; list[1].v = 0; printf("%d %d %g\n", here.v, here.m[0][1], here.in.d);
    in = first.in; in.a++; printf("%d %d %s\n", in.a, first.in.a, in.t);
    here.in.a = 1; printf("%d %d %d\n", touch(&here, 4), here.v, here.in.a);
    printf("%d %d\n", list[2].v > list[0].v, here.v == 4 && in.a == 301);
  }
  return 0;
}
