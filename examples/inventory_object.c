// A store's inventory as one object: its state in typeless members, its actions in functions.
//
//   vorc -morv -morvquiet inventory_object.c
//
// An IOBJECT at file level is seen by every function. Its own functions name the members
// directly; they take no arguments, so what an action works on is set as a member before.

IOBJECT $store {
  name, stock, prices, item, amount, price, takings, errors;

  function open() {
    stock = morv_map_new();
    prices = morv_map_new();
    takings = 0;
    errors = 0;
    return 1;
  }

  function on_hand() { return morv_atoi(morv_map_get(stock, item)); }

  function receive() {
    morv_map_set(stock, item, isprint(morv_atoi(morv_map_get(stock, item)) + amount));
    if (price > 0) morv_map_set(prices, item, isprint(price));
    return morv_atoi(morv_map_get(stock, item));
  }

  function sell() {
    if (morv_map_has(stock, item) == 0) {
      errors = errors + 1;
      printf("  no such item: %s\n", item);
      return 0;
    }
    if (morv_atoi(morv_map_get(stock, item)) < amount) {
      errors = errors + 1;
      printf("  only %s of %s\n", morv_map_get(stock, item), item);
      return 0;
    }
    morv_map_set(stock, item, isprint(morv_atoi(morv_map_get(stock, item)) - amount));
    takings = takings + amount * morv_atoi(morv_map_get(prices, item));
    return 1;
  }
};

// Plain functions wrap the actions, and give them their arguments.
subroutine receive(item, amount, price)
{
  $store.item = item;
  $store.amount = amount;
  $store.price = price;
  printf("received %d %s, now %d\n", amount, item, $store.receive());
}

subroutine sell(item, amount)
{
  printf("selling %d %s\n", amount, item);
  $store.item = item;
  $store.amount = amount;
  if ($store.sell() == 1) printf("  %d left\n", $store.on_hand());
}

subroutine report()
{
  int items; int i;
  printf("== %s ==\n", $store.name);
  items = morv_map_keys($store.stock);
  morv_list_sort(items);
  for (i = 0; i < morv_list_count(items); i++) {
    $store.item = morv_list_get(items, i);
    printf("%-8s %4d at %3s\n", $store.item, $store.on_hand(), morv_map_get($store.prices, $store.item));
  }
  printf("takings %d, %d refused\n", $store.takings, $store.errors);
}

int main()
{
  $store.name = "Corner store";
  $store.open();
  receive("bolts", 500, 2);
  receive("nuts", 400, 1);
  receive("hammer", 3, 1850);
  receive("bolts", 100, 0);
  sell("bolts", 250);
  sell("hammer", 2);
  sell("hammer", 2);
  sell("saw", 1);
  $store.name += ", evening";
  report();
  return 0;
}
