int deeper(int n) { return deeper(n + 1); }
int main()
{
  printf("before\n");
  deeper(0);
  printf("never\n");
  return 0;
}
