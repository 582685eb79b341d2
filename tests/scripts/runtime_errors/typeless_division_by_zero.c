int main()
{
  $a = 8; $b = 0;
  printf("%d\n", $b / $a);
  $a %= $b;
  printf("never %d\n", $a);
  return 0;
}
