int length(char *t) { return morv_strlen(t); }
int number(int n) { return n; }
function any($v) { return $v; }
int main()
{
  int i;
  $s = "ab";
  printf("%d\n", length("ab"));
  printf("%d\n", length("ab" + "cd"));
  $j = "ab" + "cd";
  printf("%d\n", length($j));
  printf("%d\n", morv_strlen("ab" + "cd"));
  i = 5;
  number(i += 2);
  printf("%d\n", i);
  printf("%d\n", number(i * 2 + 1));
  printf("%d\n", number(i++));
  printf("%d\n", i);
  printf("%d\n", number(number(number(3) + 1) + 1));
  return 0;
}
