int main()
{
  int x;
  $if = 3; $for = 4; $while = $if + $for; $int = "text"; $return = 5; $struct = 2.5;
  printf("%d %d %d %s %d %g", $if, $for, $while, $int, $return, $struct);
  x = 1;
  $x = "beside the typed one";
  printf("%d %s", x, $x);
  return 0;
}
