IOBJECT $acc {
  owner, balance, change;
  function deposit() { balance = balance + change; change = 0; return balance; }
  function show() { printf("%s has %d\n", owner, balance); }
  function name() { return owner; }
};
int main()
{
  $acc.owner = "Ada"; $acc.balance = 10;
  $acc.show();
  $acc.change = 5;
  printf("%d\n", $acc.deposit());
  $acc.owner += " L.";
  $acc.balance += 2.5;
  printf("%s %g\n", $acc.name(), $acc.balance);
  $t = $acc.owner + "!";
  printf("%s\n", $t);
  return 0;
}
