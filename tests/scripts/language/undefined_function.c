int main()
{
  printf("before\n");
  nobody(1);
  printf("never\n");
  return 0;
}
