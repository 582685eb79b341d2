int area() { return 0; }
int area(int a) { return a * a; }
int area(int a, int b) { return a * b; }
int over(void) { return 10; }
int over(int a) { return a; }
int many(int a, ...) { return a; }
int one(int a) { return a; }
int two(int a, int b) { return a; }
int main()
{
  printf("%d %d %d\n", area(), area(3), area(3, 4));
  printf("%d %d\n", over(), over(7));
  printf("%d %d\n", many(1), many(2, "x", 3.5));
  printf("%d\n", one(5, 6));
  printf("%d\n", two(5));
  printf("%d\n", two(5, 6, 7));
  one();
  return 0;
}
