// Getting facts out of loose text by patterns: one match, all matches, groups, checks, rewriting.
//
//   vorc -morv -morvquiet regex_extract.c
//
// In quotes a backslash is written twice: the pattern \d+ is "\\d+".

// All matches of a pattern in a text, as a new list. Each search goes on behind the last match.
function all_matches(pattern, text)
{
  int found; int place;
  found = morv_list_new();
  $rest = text;
  $match = morv_re(pattern, $rest);
  while (morv_strlen($match) > 0) {
    morv_list_add(found, $match);
    place = morv_strstr($rest, $match) + morv_strlen($match);
    $rest = morv_substr($rest, place, 0 - 1);
    $match = morv_re(pattern, $rest);
  }
  return found;
}

// A group of a match: the substitution keeps nothing else, if the pattern spans the whole text.
function group(pattern, number, text)
{
  if (morv_strlen(morv_re(isprint("m/", pattern, "/"), text)) == 0) return "";
  return morv_re(isprint("s/", pattern, "/\\", number, "/"), text);
}

// Whether a text as a whole has a form.
function has_form(pattern, text)
{
  return morv_strlen(morv_re(isprint("m/^(", pattern, ")$/"), text)) > 0;
}

subroutine check(what, pattern, text)
{
  $verdict = "no";
  if (has_form(pattern, text)) $verdict = "yes";
  printf("  %-8s %-22s %s\n", what, text, $verdict);
}

int main()
{
  int found; int i; int lines; int sum;
  $text = "Order 1042 of 2024-05-31: 12 bolts, 3 saws; mail ann.lee@shop.example or bob@yard.example today.";

  printf("first number: %s\n", morv_re("[0-9]+", $text));
  found = all_matches("[\\w.]+@[\\w.]+\\w", $text);
  printf("%d addresses: %s\n", morv_list_count(found), morv_join(found, ", "));

  // The date by its parts: the pattern takes in what stands around it, the groups keep the parts.
  $date = ".*(\\d\\d\\d\\d)-(\\d\\d)-(\\d\\d).*";
  printf("year %s, month %s, day %s\n", group($date, 1, $text), group($date, 2, $text), group($date, 3, $text));

  sum = 0;
  found = all_matches("\\d+ (bolt|saw|nail)s?", $text);
  for (i = 0; i < morv_list_count(found); i++) {
    printf("item: %s\n", morv_list_get(found, i));
    sum = sum + morv_atoi(morv_list_get(found, i));
  }
  printf("%d pieces\n", sum);

  printf("forms:\n");
  check("integer", "[+-]?\\d+", "-42");
  check("integer", "[+-]?\\d+", "4.2");
  check("decimal", "[+-]?\\d+([.]\\d+)?", "4.2");
  check("colour", "#[0-9a-f]+", "#ff8040");
  check("name", "[a-z_]\\w*", "2nd");

  // Line by line, every match: key = value settings to shell variables.
  $settings = "host = shop.example\nport=8080\n# a comment\npath  =  /srv/www";
  $settings = ised($settings, "s/ *= */=/");
  lines = morv_split(ised($settings, "s/^(\\w+)=(.*)$/export \\1=\"\\2\"/"), "\n");
  for (i = 0; i < morv_list_count(lines); i++)
    if (morv_starts_with(morv_list_get(lines, i), "#") == 0) printf("%s\n", morv_list_get(lines, i));

  printf("%s\n", ised("The cat sat with another cat.", "s/(cat|hat)/[&]/g"));
  printf("%s\n", morv_re("s/(\\w+), (\\w+)/\\2 \\1/", "Lovelace, Ada"));
  return 0;
}
