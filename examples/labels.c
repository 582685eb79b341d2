// Labels for a store: each with a QR code, a Code 128 for the shelf and the article's EAN.
//
//   vorc -morv -morvquiet labels.c
//
// Writes labels.html, a page to print: the codes are drawings that stay crisp at any size. What is
// printed here is one line a label, with what its codes hold.

char *names[] = {"Milk, 1 l", "Bread <rye>", "Tea & honey"};
char *articles[] = {"400638133393", "5901234123457", "03600029145"};
char *shelves[] = {"C3/07", "A1/12", "B2/01"};
#define LABELS 3

// UPC articles have eleven or twelve digits, EAN articles one more, check digit left out or not.
function article_code(digits)
{
  if (morv_strlen(digits) == 11) return morv_barcode_svg(digits, "upca", 2);
  return morv_barcode_svg(digits, "ean13", 2);
}

function make_label(name, article, shelf)
{
  $code = article_code(article);
  if (morv_strlen($code) == 0) return "";
  $html = "<section><h2>" + morv_html_escape(name) + "</h2>\n";
  $html = $html + morv_qrcode_svg(isprint("https://store.example/", article), 3) + "\n";
  $html = $html + morv_barcode_svg("SHELF-" + shelf, "code128", 2) + "\n";
  return morv_concat($html, $code, "\n</section>\n");
}

int main()
{
  int i;
  $page = "<!DOCTYPE html>\n<html><head><title>Labels</title></head><body>\n";
  for (i = 0; i < LABELS; i++) {
    $piece = make_label(names[i], articles[i], shelves[i]);
    if (morv_strlen($piece) == 0) printf("%s: the article number %s can't be right", names[i], articles[i]);
    else printf("%-12s %-6s %-14s %d bytes of label", names[i], shelves[i], articles[i], morv_strlen($piece));
    $page = morv_concat($page, $piece);
  }
  morv_file_write("labels.html", morv_concat($page, "</body></html>\n"));
  printf("labels.html: %d drawings", igrep_count("labels.html", "<svg"));
  return 0;
}
