int main()
{
  double d;
  d = 1.0 / 0;
  printf("never\n");
  return 0;
}
