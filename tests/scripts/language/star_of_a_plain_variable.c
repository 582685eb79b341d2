int main()
{
  int x;
  x = 1;
  x = *x;
  printf("never\n");
  return 0;
}
