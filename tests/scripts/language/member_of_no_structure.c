int main()
{
  int x;
  x.y = 1;
  printf("never\n");
  return 0;
}
