// Building text: joining, growing, converting, wrapping, reversing, Roman numerals, CSV.
//
//   vorc -morv -morvquiet string_building.c

// Joins the numbers from a to b. += takes text and numbers alike.
function range(a, b)
{
  int i;
  $text = "";
  for (i = a; i <= b; i++) {
    if (i > a) $text += ", ";
    $text += i;
  }
  return $text;
}

function repeat(piece, times)
{
  $text = "";
  while (times > 0) { $text += piece; times = times - 1; }
  return $text;
}

// Byte by byte through a char array: a pointer reads the text, the array takes the new one.
char *reverse(char *text)
{
  char turned[200]; int i; int length;
  length = morv_strlen(text);
  for (i = 0; i < length; i++) turned[i] = text[length - 1 - i];
  turned[length] = 0;
  return turned;   // the text is kept, although the array goes away
}

int values[] = {1000, 900, 500, 400, 100, 90, 50, 40, 10, 9, 5, 4, 1};
char *numerals[] = {"M", "CM", "D", "CD", "C", "XC", "L", "XL", "X", "IX", "V", "IV", "I"};

function roman(n)
{
  int i;
  $text = "";
  for (i = 0; i < 13; i++) {
    while (n >= values[i]) { $text += numerals[i]; n = n - values[i]; }
  }
  return $text;
}

// Breaks a text into lines of at most width bytes, between words.
subroutine wrap(text, width)
{
  int words; int i;
  words = morv_split(text, " ");
  $line = "";
  for (i = 0; i < morv_list_count(words); i++) {
    $word = morv_list_get(words, i);
    if (morv_strlen($line) > 0) {
      if (morv_strlen($line) + 1 + morv_strlen($word) > width) { printf("|%-24s|\n", $line); $line = ""; }
      else $line += " ";
    }
    $line += $word;
  }
  printf("|%-24s|\n", $line);
  morv_list_free(words);
}

// A field of a CSV line: quoted if it has to be, quotes doubled.
function csv_field(text)
{
  if (morv_strstr(text, ",") < 0 && morv_strstr(text, "\"") < 0) return text;
  $quoted = "\"";
  $quoted += morv_replace_all(text, "\"", "\"\"");
  $quoted += "\"";
  return $quoted;
}

int main()
{
  int year;
  printf("%s\n", range(1, 8));
  printf("%s\n", repeat("=-", 12) + "=");
  printf("%s %s\n", reverse("stressed"), reverse(morv_upper("live")));
  for (year = 1989; year < 2025; year += 35) printf("%d = %s\n", year, roman(year));
  wrap("A text that is too long for one line is broken between its words, as in any letter.", 24);
  // isprint turns any arguments into one text; + needs a dollar variable beside a number.
  $csv = isprint(csv_field("Smith, John"), ",", csv_field("6' 2\""), ",", csv_field("plain"), ",", 42);
  printf("%s\n", $csv);
  return 0;
}
