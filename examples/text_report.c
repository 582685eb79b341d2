// A report with aligned columns, from records in arrays and totals in a map.
//
//   vorc -morv -morvquiet text_report.c

#define SALES 8

struct Sale { char *region; char *product; int pieces; double price; };

struct Sale sales[SALES] = {
  {"North", "hammer", 12, 18.50},
  {"South", "hammer", 7, 18.50},
  {"North", "saw", 3, 24.00},
  {"East", "drill", 2, 129.90},
  {"South", "drill", 5, 124.90},
  {"East", "nails", 240, 0.05},
  {"North", "nails", 1000, 0.04},
  {"West", "saw", 1, 24.00}
};

double value_of(int i) { return sales[i].pieces * sales[i].price; }

// A line of n times the same character.
char *rule(int n)
{
  $line = "";
  while (n > 0) { $line += "-"; n = n - 1; }
  return $line;
}

void table(void)
{
  int i; double total;
  total = 0;
  printf("%-8s %-10s %8s %9s %10s\n", "Region", "Product", "Pieces", "Price", "Value");
  printf("%s\n", rule(49));
  for (i = 0; i < SALES; i++) {
    printf("%-8s %-10s %8d %9.2f %10.2f\n", sales[i].region, sales[i].product, sales[i].pieces,
           sales[i].price, value_of(i));
    total += value_of(i);
  }
  printf("%s\n", rule(49));
  printf("%-8s %40.2f\n", "Total", total);
}

// Adds up by region. A map holds texts, so that the sums live in an array and the map only
// tells each region's place in it.
void by_region(void)
{
  double sums[SALES]; int place; int places; int i; int names;
  places = morv_map_new();
  for (i = 0; i < SALES; i++) {
    if (morv_map_has(places, sales[i].region) == 0) {
      place = morv_map_count(places);
      morv_map_set(places, sales[i].region, isprint(place));
      sums[place] = 0;
    }
    place = morv_atoi(morv_map_get(places, sales[i].region));
    sums[place] = sums[place] + value_of(i);
  }
  names = morv_map_keys(places);
  morv_list_sort(names);
  printf("By region:\n");
  for (i = 0; i < morv_list_count(names); i++) {
    $name = morv_list_get(names, i);
    place = morv_atoi(morv_map_get(places, $name));
    // One star for each 20 of value.
    $bar = "";
    while (sums[place] >= 20 * (morv_strlen($bar) + 1)) $bar += "*";
    printf("  %-6s %8.2f %s\n", $name, sums[place], $bar);
  }
  morv_map_free(places);
}

int main()
{
  int i; int best;
  table();
  by_region();
  best = 0;
  for (i = 1; i < SALES; i++) if (value_of(i) > value_of(best)) best = i;
  printf("Best sale: %s to the %s\n", sales[best].product, morv_lower(sales[best].region));
  return 0;
}
