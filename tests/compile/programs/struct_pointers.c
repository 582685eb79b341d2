// calls: run(5); list(4); through(3); array()
// modes: -addr32
struct Node { int value; struct Node *next; };
struct Pair { int a; int b; };
struct Node nodes[8];
void grow(struct Pair *p, int by) { p->a += by; p->b = p->a * 2; }
int run(int n) { struct Pair p; struct Pair *q; q = &p; q->a = n; q->b = n + 1; grow(&p, 10); grow(q, 1); return p.a * 100 + p.b; }
int list(int n)
{
  int i; int s; struct Node *p;
  for (i = 0; i < n; i++) { nodes[i].value = i * i; nodes[i].next = &nodes[i + 1]; }
  nodes[n].value = 100;
  nodes[n].next = 0;
  s = 0;
  p = &nodes[0];
  while (p != 0) { s = s * 3 + p->value; p = p->next; }
  return s;
}
int through(int n) { struct Node a; struct Node b; a.next = &b; b.next = &a; a.value = n; b.value = 7; a.next->value += 1; return a.next->next->value * 10 + b.value; }
int array() { struct Pair p[3]; struct Pair *q; p[0].a = 1; p[1].a = 2; p[2].a = 3; q = p; q = q + 1; q->b = 50; q++; return q->a * 100 + p[1].b; }
