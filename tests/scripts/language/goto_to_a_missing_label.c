int main()
{
  printf("before\n");
  goto nowhere;
  printf("after\n");
  return 0;
}
