struct S { int x; };
struct S s;
int main()
{
  s.x = 1; printf("%d\n", s.x);
  s.y = 2;
  return 0;
}
