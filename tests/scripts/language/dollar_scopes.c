int n = 3;
int main()
{
  int k = 1;
  $k = "dollar";
  printf("%d %s\n", k, $k);
  $outer = 1;
  { $outer = 2; $own = "inner"; printf("%s\n", $own); { $own = "deeper"; } printf("%s\n", $own); }
  printf("%d\n", $outer);
  $if = 3; $for = 4; $int = $if * $for;
  printf("%d\n", $int);
  $n = "beside a global";
  printf("%d %s\n", n, $n);
  for ($i = 0; $i < 2; $i++) printf("turn %d\n", $i);
  $chain = $same = "both";
  $same += "!";
  printf("%s %s\n", $chain, $same);
  $grown = "";
  $i = 0;
  while ($i < 300) { $grown += "0123456789"; $i = $i + 1; }
  printf("%d %s\n", morv_strlen($grown), morv_substr($grown, 2995, 0 - 1));
  return 0;
}
