IOBJECT $acc {
  total, count; name;
  function add(n) { total = total + 5; count = count + 1; }
  function get() { return total; }
};
IOBJECT $other { total; };
int main()
{
  $acc.total = 0; $acc.count = 0; $other.total = 7;
  $acc.add(1); $acc.add(2);
  printf("%d %d %d %d", $acc.total, $acc.count, $acc.get(), $other.total);
  $acc.name = "n" + "m"; printf("%s", $acc.name);
  $acc.total = 2.5; $other.total = $acc.total; printf("%g %g", $acc.total, $other.total);
  IOBJECT $local { x, y; };
  $local.x = $acc.count; $local.y = $local.x + 1;
  printf("%d %d", $local.x, $local.y);
  return 0;
}
