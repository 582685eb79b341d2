// A joined text lives until 64 further ones have been made; a dollar variable keeps a copy of its own.
int main()
{
  char *first; int i;
  first = "a" + "b";
  $copy = first;
  for (i = 0; i < 63; i++) { $t = $copy + i; }
  printf("%s %s\n", first, $copy);
  $t = $copy + "!";
  printf("%s %s\n", first, $copy);
  return 0;
}
