// A number joins a text only beside a dollar variable itself; the joined text is none any more.
int main()
{
  char *s; char *t;
  s = "ab"; t = "cd";
  printf("%s\n", s + t);
  printf("%s\n", "ab" + "cd" + "ef");
  printf("%d\n", "ab" + 1);
  $s = "ab";
  printf("%s\n", $s + 1);
  printf("%s\n", 1 + $s);
  printf("%s\n", $s + 1.5 + t);
  printf("%s\n", $s + 1 + 2);
  printf("%s\n", 1 + 2 + $s);
  $x = $s + 0.1;
  printf("%s\n", $x);
  $x = $x + $x;
  printf("%s %d\n", $x, morv_strlen($x));
  $i = 7;
  printf("%s\n", $s + $i);
  printf("%d\n", $i + 1);
  return 0;
}
