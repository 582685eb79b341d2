int main()
{
  int i;
  $s = "";
  for (i = 0; i < 2000; i++) $s = $s + "some words ";
  printf("%d\n", morv_strlen($s));
  return 0;
}
