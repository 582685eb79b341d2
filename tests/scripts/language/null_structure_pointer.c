struct S { int x; };
int main()
{
  struct S *p;
  p = 0;
  p->x = 1;
  printf("never\n");
  return 0;
}
