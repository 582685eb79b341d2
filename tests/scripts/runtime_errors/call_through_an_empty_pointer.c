int add(int a, int b) { return a + b; }
int (*f)(int, int);
int main()
{
  printf("start\n");
  f = add; printf("%d\n", f(1, 2));
  f = 0;
  printf("%d\n", f(1, 2));
  return 0;
}
