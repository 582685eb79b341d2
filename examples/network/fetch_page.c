// A page fetched and searched: its title, its links, and all times of day in it.
//
//   python3 service.py 8765 &
//   MORV_HTTPS_ALLOW_PRIVATE=1 vorc -morv -morvquiet fetch_page.c http://localhost:8765
//
// Without the variable, nothing on this machine or in its network can be reached.

// Prints all matches of a pattern in a text.
subroutine show(what, pattern, text)
{
  $rest = text;
  $match = morv_re(pattern, $rest);
  while (morv_strlen($match) > 0) {
    printf("%s: %s\n", what, $match);
    $rest = morv_substr($rest, morv_strstr($rest, $match) + morv_strlen($match), 0 - 1);
    $match = morv_re(pattern, $rest);
  }
}

int main()
{
  $base = morv_getparam("1");
  $page = morv_https_get(isprint($base, "/"), "Accept: text/html\nAccept-Language: en");
  printf("status %d, %d bytes\n", morv_https_status(), morv_strlen($page));
  if (morv_https_status() != 200) morv_exit(1);
  show("title", "<title>[^<]*", $page);
  show("link", "href=\"[^\"]*", $page);
  show("time", "\\d+:\\d\\d", $page);

  morv_https_get(isprint($base, "/nothing.html"), "");
  printf("a page that is missing: status %d\n", morv_https_status());
  return 0;
}
