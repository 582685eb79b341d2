int add(int a, int b) { return a + b; }
int mul(int a, int b) { return a * b; }
int main()
{
  int (*op)(int, int);
  op = add;
  printf("%d\n", op(3, 4));
  op = mul;
  printf("%d\n", op(3, 4));
  printf("%d\n", (*op)(5, 6));
  return 0;
}
