struct S { int x; };
int main()
{
  struct S s;
  s->x = 5;
  printf("never\n");
  return 0;
}
