function show($v) { printf("%s\n", $v); return 0; }
function twice(v) { return v + v; }
int main()
{
  show("text"); show(12); show(2.5); show("again");
  printf("%s\n", twice("ab"));
  printf("%d\n", twice(4));
  printf("%g\n", twice(1.25));
  $n = twice("x");
  printf("%s\n", $n + 1);
  return 0;
}
