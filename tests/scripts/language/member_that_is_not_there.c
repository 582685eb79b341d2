struct S { int x; };
int main()
{
  struct S s;
  s.x = 1;
  printf("%d\n", s.x);
  s.y = 1;
  printf("never\n");
  return 0;
}
