#!/usr/bin/env morv
#include "page.h"

/* A form, and what a search in a file has found. */
int main()
{
  int i; int lines; int found;
  $q = morv_trim(morv_getparam("q"));
  page_begin("Library");
  printf("<form><input name=\"q\" value=\"%s\" aria-label=\"Words\"> <button>Search</button></form>\n", morv_html_escape($q));
  found = 0;
  lines = morv_file_lines("data/books.txt");
  printf("<ul>\n");
  i = 1;
  while (i <= lines) {
    $line = morv_file_line("data/books.txt", i);
    if (morv_search_txt($line, $q) >= 0) {
      $author = morv_trim(icut($line, "|", 1));
      $title = morv_trim(icut($line, "|", 2));
      $link = isprint("label.c?text=", address_part($title));
      printf("<li><a href=\"%s\">%s</a>, %s</li>\n", $link, morv_html_escape($title), morv_html_escape($author));
      found = found + 1;
    }
    i = i + 1;
  }
  printf("</ul>\n<p>%d of %d books.</p>\n", found, lines);
  page_end(0);
  return 0;
}
