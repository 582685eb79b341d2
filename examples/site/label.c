#!/usr/bin/env morv
#include "page.h"

/* A label to print: a text and its code. The picture is a request of its own. */
int main()
{
  $text = morv_getparam("text");
  page_begin("Label");
  printf("<form><input name=\"text\" value=\"%s\" aria-label=\"Text\"> <button>Show</button></form>\n", morv_html_escape($text));
  if (morv_strlen($text) > 0) {
    printf("<p><img src=\"code.c?text=%s\" alt=\"code\"></p>\n", address_part($text));
    printf("<p>%s</p>\n", morv_html_escape($text));
  }
  page_end(0);
  return 0;
}
