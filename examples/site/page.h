/* What all pages of the site begin and end with. */
subroutine page_begin(title)
{
  printf("Content-Type: text/html; charset=utf-8\n\n");
  printf("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n");
  printf("<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n");
  printf("<title>%s</title>\n<link rel=\"stylesheet\" href=\"style.css\">\n</head>\n<body>\n", morv_html_escape(title));
  printf("<nav><a href=\"index.c\">Library</a> <a href=\"label.c\">Labels</a></nav>\n<h1>%s</h1>\n", morv_html_escape(title));
}

subroutine page_end(n)
{
  printf("</body>\n</html>\n");
}

/* A text fit for an address: everything but letters and digits as % and two digits. */
function address_part(text)
{
  char *p; int i; int c; int plain;
  p = text;
  $out = "";
  i = 0;
  while (p[i] != 0) {
    c = p[i];
    plain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (plain) $out += morv_substr(text, i, 1);
    else {
      $digits = "%" + morv_hex(c, 2);
      $out += $digits;
    }
    i = i + 1;
  }
  return $out;
}

/* A text fit to stand between quotes in JSON. */
function json_text(text)
{
  char *p; int i; int c;
  p = text;
  $out = "";
  i = 0;
  while (p[i] != 0) {
    c = p[i];
    if (c < 32) $piece = isprint("\\u", morv_hex(c, 4));
    else $piece = morv_substr(text, i, 1);
    if (c == '"' || c == '\\') $out += "\\";
    $out += $piece;
    i = i + 1;
  }
  return $out;
}
