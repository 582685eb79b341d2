int one(int a) { return a; }
int add(int a) { return a; }
int add(int a, int b) { return a + b; }
int add(int a, int b, int c) { return a + b + c; }
int main()
{
  printf("%d\n", one(1, 2));
  printf("%d %d %d\n", add(1), add(1, 2), add(1, 2, 3));
  printf("%d\n", add(1, 2, 3, 4));
  printf("never\n");
  return 0;
}
