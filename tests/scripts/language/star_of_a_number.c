int main()
{
  int x;
  x = 1;
  printf("%d\n", x);
  x = *5;
  printf("never\n");
  return 0;
}
