class C { int hidden; public: int open; };
int main()
{
  C c;
  c.open = 1;
  printf("%d", c.open);
  c.hidden = 2;
  printf("not reached");
  return 0;
}
