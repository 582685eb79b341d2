int main()
{
  $x = 5;
  $x %= 2.0;
  printf("%d\n", $x);
  $x = 6.9;
  $x |= 1;
  printf("%d\n", $x);
  $x = 5 % 2.0;
  printf("never\n");
  return 0;
}
