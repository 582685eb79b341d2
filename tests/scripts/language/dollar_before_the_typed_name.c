int main()
{
  $x = 1;
  int x;
  return 0;
}
