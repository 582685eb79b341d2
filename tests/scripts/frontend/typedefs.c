typedef int A; typedef A B; typedef B *PB;
typedef struct { char c; B b; } P; typedef P Q; typedef Q *PQ;
typedef enum { X, Y } E; typedef char T[10]; typedef int M[2][3];
typedef unsigned char BYTE; typedef unsigned short WORD; typedef unsigned UN; typedef long long LL;
typedef char *STR; typedef STR STRS[2]; typedef void *PV; typedef int (*OP)(int, int);
typedef struct node { int v; struct node *next; } Node; typedef Node *PNode;
typedef int first, *second, third[4];
typedef struct Later Later; struct Later { int v; Later *next; }; typedef enum Tint { RED, GREEN = 4 } Tint;
T text; M matrix; STRS names = {"a", "b"};
int add(int a, int b) { return a + b; }
int use(PQ q, B b, STR s) { printf("%d %d %s", q->b, b, s); return 0; }
int main()
{
  B b; PB pb; Q q; E e; BYTE by; STR s; OP op; Node n1; Node n2; PNode p;
  typedef int Local; Local l;
  first f; second g; third h;
  printf("%d %d %d %d %d %d", sizeof(A), sizeof(B), sizeof(PB), sizeof(P), sizeof(Q), sizeof(PQ));
  printf("%d %d %d %d %d %d", sizeof(E), sizeof(BYTE), sizeof(WORD), sizeof(UN), sizeof(LL), sizeof(STR));
  printf("%d %d %d %d %d %d", sizeof(T), sizeof(text), sizeof(M), sizeof(matrix), sizeof(STRS), sizeof(PV));
  b = 5; pb = &b; q.b = 6; e = Y; by = 200; s = "str"; op = add; matrix[1][2] = 7; l = 8;
  printf("%d %d %d %d %d %s %d %d %d", b, *pb, q.b, e, by, s, op(1, 2), matrix[1][2], l);
  use(&q, 9, "text"); printf("%s%s", names[0], names[1]);
  n1.v = 1; n2.v = 2; n1.next = &n2; n2.next = 0;
  for (p = &n1; p != 0; p = p->next) printf("%d", p->v);
  f = 10; g = &f; h[3] = 11; printf("%d %d %d", *g, h[3], sizeof(h));
  { Later a; struct Later later; Tint t; a.v = 13; a.next = &later; later.v = 14; t = GREEN;
    printf("%d %d %d %d", a.next->v, sizeof(Later), sizeof(struct Later), t); }
  { typedef char Local2; Local2 c; c = 12; printf("%d %d", c, sizeof(c)); }
  return 0;
}
