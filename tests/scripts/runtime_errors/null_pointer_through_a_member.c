struct N { int v; struct N *next; };
struct N a;
int main()
{
  struct N *p;
  a.v = 3; a.next = 0; p = &a;
  printf("%d\n", p->v);
  p = p->next;
  if (!p) printf("end of the list\n");
  p->v = 4;
  printf("never\n");
  return 0;
}
