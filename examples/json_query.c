// Questions to a JSON text: paths, walking arrays, adding up, a query from the command line.
//
//   vorc -morv -morvquiet json_query.c [path [file]]
//
// With a path, such as orders.1.items.0.name, only that value is printed.

function sample()
{
  $json = "{ \"shop\": \"Corner store\", \"open\": true,";
  $json += "  \"orders\": [";
  $json += "    {\"id\": 17, \"customer\": {\"name\": \"Ada\", \"city\": \"London\"},";
  $json += "     \"items\": [{\"name\": \"bolts\", \"pieces\": 40, \"price\": 0.25},";
  $json += "                 {\"name\": \"hammer\", \"pieces\": 1, \"price\": 18.50}]},";
  $json += "    {\"id\": 18, \"customer\": {\"name\": \"Nikola \\\"Nick\\\"\", \"city\": \"Smiljan\"},";
  $json += "     \"items\": [{\"name\": \"wire\", \"pieces\": 3, \"price\": 7.10}]},";
  $json += "    {\"id\": 19, \"customer\": {\"name\": \"Grace\", \"city\": \"London\"}, \"items\": []}";
  $json += "  ], \"notes\": null }";
  return $json;
}

// The value of a decimal text, from its digits in front of and behind the point.
double number(char *text)
{
  int point; double value; double scale; int i;
  point = morv_strstr(text, ".");
  value = morv_atoi(text);
  if (point < 0) return value;
  scale = 0.1;
  for (i = point + 1; text[i] >= '0' && text[i] <= '9'; i++) {
    value = value + (text[i] - '0') * scale;
    scale = scale / 10;
  }
  return value;
}

// How many elements an array has: the first place where nothing stands is its length.
function length(json, path)
{
  int n;
  n = 0;
  while (morv_strlen(morv_json_get(json, isprint(path, ".", n))) > 0) n = n + 1;
  return n;
}

// An order's total. An order taken out of the text is JSON again, so that paths get short.
function total(order)
{
  int i; double sum;
  sum = 0;
  i = 0;
  while (i < length(order, "items")) {
    sum += morv_atoi(morv_json_get(order, isprint("items.", i, ".pieces"))) *
           number(morv_json_get(order, isprint("items.", i, ".price")));
    i = i + 1;
  }
  return sum;
}

int main()
{
  int i; int orders; int cities; int names; double all; double one;
  $json = sample();
  if (morv_strlen(morv_getparam("2")) > 0) $json = icat(morv_getparam("2"));
  $path = morv_getparam("1");
  if (morv_strlen($path) > 0) { printf("%s\n", morv_json_get($json, $path)); morv_exit(0); }

  orders = length($json, "orders");
  printf("%s: %d orders, open: %s\n", morv_json_get($json, "shop"), orders, morv_json_get($json, "open"));

  cities = morv_map_new();
  all = 0;
  for (i = 0; i < orders; i++) {
    $order = morv_json_get($json, isprint("orders.", i));
    $city = morv_json_get($order, "customer.city");
    one = total($order);
    all += one;
    printf("%s  %-14s %-8s %6.2f\n", morv_json_get($order, "id"), morv_json_get($order, "customer.name"),
           $city, one);
    morv_map_set(cities, $city, morv_trim(isprint(morv_map_get(cities, $city), " ", morv_json_get($order, "id"))));
  }
  printf("all together %.2f\n", all);

  names = morv_map_keys(cities);
  for (i = 0; i < morv_list_count(names); i++)
    printf("%s: orders %s\n", morv_list_get(names, i), morv_map_get(cities, morv_list_get(names, i)));

  printf("first item: %s\n", morv_json_get($json, "orders.0.items.0"));
  printf("notes: [%s], nothing there: [%s]\n", morv_json_get($json, "notes"), morv_json_get($json, "orders.7.id"));
  return 0;
}
