#!/usr/bin/env morv
#include "page.h"

/* The same search as JSON, for programs. */
int main()
{
  int i; int lines;
  $q = morv_trim(morv_getparam("q"));
  printf("Content-Type: application/json\nCache-Control: no-store\n\n");
  printf("{\"q\": \"%s\", \"books\": [\n", json_text($q));
  $comma = "";
  lines = morv_file_lines("data/books.txt");
  i = 1;
  while (i <= lines) {
    $line = morv_file_line("data/books.txt", i);
    if (morv_search_txt($line, $q) >= 0) {
      $author = json_text(morv_trim(icut($line, "|", 1)));
      $title = json_text(morv_trim(icut($line, "|", 2)));
      printf("%s{\"author\": \"%s\", \"title\": \"%s\"}\n", $comma, $author, $title);
      $comma = ",";
    }
    i = i + 1;
  }
  printf("]}\n");
  return 0;
}
