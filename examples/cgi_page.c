// A page of a small shop: reads the request's parameters, checks them, prints a page.
//
//   QUERY_STRING="item=tea&pieces=3&note=gift+for+%3CTom%3E" vorc -morv -morvquiet cgi_page.c
//
// Under a web server, the server sets QUERY_STRING. Started by hand without it, the page shows
// its form and an example order. Arguments on the command line arrive as parameters 1, 2, ...

char *items[] = {"tea", "coffee", "cocoa"};
int cents[] = {320, 450, 390};
#define ITEMS 3

// A parameter of the request, or another text when it is missing or empty.
function parameter(name, otherwise)
{
  $value = morv_trim(morv_getparam(name));
  if (morv_strlen($value) == 0) $value = otherwise;
  return $value;
}

// Everything that comes from outside goes through here before it enters the page.
function safe(text) { return morv_html_escape(text); }

int find_item(char *name)
{
  int i; int found;
  found = 0 - 1;
  for (i = 0; i < ITEMS; i++) if (morv_strcmp(items[i], name) == 0) found = i;
  return found;
}

void head(char *title)
{
  printf("Content-Type: text/html; charset=utf-8\n");
  printf("\n");
  printf("<!DOCTYPE html>\n");
  printf("<html><head><title>%s</title></head><body>\n", safe(title));
  printf("<h1>%s</h1>\n", safe(title));
}

void form(char *chosen, int pieces)
{
  int i;
  printf("<form><select name=\"item\">\n");
  for (i = 0; i < ITEMS; i++) {
    $mark = "";
    if (morv_strcmp(items[i], chosen) == 0) $mark = " selected";
    printf("  <option%s>%s</option>\n", $mark, items[i]);
  }
  printf("</select> <input name=\"pieces\" value=\"%d\"> <button>Order</button></form>\n", pieces);
}

int main()
{
  int pieces; int item;
  $item = parameter("item", "coffee");
  $note = parameter("note", "none; \"default\" <order>");
  pieces = morv_atoi(parameter("pieces", "2"));
  item = find_item($item);

  head("Order");
  form($item, pieces);
  if (item < 0) {
    printf("<p class=\"error\">We have no %s.</p>\n", safe($item));
  } else if (pieces < 1 || pieces > 99) {
    printf("<p class=\"error\">Between 1 and 99 pieces, please.</p>\n");
  } else {
    printf("<p>%d x %s at %.2f: <b>%.2f</b></p>\n", pieces, items[item], cents[item] / 100.0,
           pieces * cents[item] / 100.0);
    printf("<p>Note: %s</p>\n", safe($note));
  }
  printf("</body></html>\n");
  return 0;
}
