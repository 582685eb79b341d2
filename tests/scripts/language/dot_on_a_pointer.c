struct S { int x; };
int main()
{
  struct S s; struct S *p;
  s.x = 4; p = &s;
  printf("%d\n", p->x);
  p.x = 5;
  printf("never\n");
  return 0;
}
