class Box { int hidden; public: int open; };
int main()
{
  Box b;
  b.open = 1;
  printf("%d\n", b.open);
  b.hidden = 2;
  printf("never\n");
  return 0;
}
