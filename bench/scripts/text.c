int main()
{
  int i;
  $s = "";
  for (i = 0; i < 80000; i++) $s += "word ";
  printf("%d\n", morv_strlen($s));
  return 0;
}
