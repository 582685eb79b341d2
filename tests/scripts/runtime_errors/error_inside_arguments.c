int inner(int a) { return 1 / a; }
int outer(int a) { printf("outer %d\n", a); return a; }
int main()
{
  printf("%d %d\n", outer(1), outer(2));
  printf("%d %d %d\n",
         outer(3),
         outer(inner(0)),
         outer(4));
  printf("never\n");
  return 0;
}
