int main()
{
  printf("before\n");
  later(1);
  printf("never\n");
  return 0;
}
int later(int a) { return a; }
