int main()
{
  $i = 0;
  $sum = 0;
  while ($i < 1000000)
  {
    $sum = $sum + $i % 7;
    $i = $i + 1;
  }
  printf("%d\n", $sum);
  return 0;
}
