// From a log file to a report: filtering, cutting columns, counting, sorting.
//
//   vorc -morv -morvquiet log_report.c [log file]
//
// Without an argument it writes a sample log, works on that, and removes it.

subroutine write_sample(path)
{
  $log = "";
  $log += "2024-05-31 08:00:01 INFO  web   200 /index\n";
  $log += "2024-05-31 08:00:07 INFO  web   200 /shop\n";
  $log += "2024-05-31 08:01:12 WARN  disk  91 percent used\n";
  $log += "2024-05-31 08:02:30 ERROR web   500 /shop/order\n";
  $log += "2024-05-31 08:03:02 INFO  web   404 /favicon.ico\n";
  $log += "2024-05-31 08:04:44 ERROR db    connection lost\n";
  $log += "2024-05-31 08:04:45 ERROR web   500 /shop/order\n";
  $log += "2024-05-31 08:05:00 WARN  disk  95 percent used\n";
  $log += "2024-05-31 08:06:10 INFO  web   200 /index\n";
  morv_file_write(path, $log);
}

// Adds one to a key's count in a map.
subroutine count(map, key)
{
  int n;
  n = morv_atoi(morv_map_get(map, key)) + 1;
  morv_map_set(map, key, isprint(n));
}

// Counts the different lines of a text in a new map.
function tally(text)
{
  int map; int lines; int i;
  map = morv_map_new();
  lines = morv_split(morv_trim(text), "\n");
  for (i = 0; i < morv_list_count(lines); i++) count(map, morv_trim(morv_list_get(lines, i)));
  morv_list_free(lines);
  return map;
}

// Prints a map's counts, the largest first.
subroutine ranking(title, map)
{
  int keys; int rows; int i; int n;
  printf("%s\n", title);
  keys = morv_map_keys(map);
  rows = morv_list_new();
  for (i = 0; i < morv_list_count(keys); i++) {
    n = morv_atoi(morv_map_get(map, morv_list_get(keys, i)));
    // Counted down from a large number, so that ascending order puts the largest first.
    morv_list_add(rows, isprint(100000 - n, " ", morv_list_get(keys, i)));
  }
  morv_list_sort(rows);
  for (i = 0; i < morv_list_count(rows); i++) {
    $row = morv_list_get(rows, i);
    printf("%5d  %s\n", 100000 - morv_atoi($row), morv_substr($row, 6, 0 - 1));
  }
  morv_list_free(keys);
  morv_list_free(rows);
}

int main()
{
  int sample; int lines; int i; int worst; int percent;
  $path = morv_getparam("1");
  sample = morv_strlen($path) == 0;
  if (sample) { $path = "log_report_sample.log"; write_sample($path); }

  printf("%d lines, %d errors, %d warnings\n", morv_file_lines($path), igrep_count($path, " ERROR "),
         igrep_count($path, " WARN "));

  // Columns: date, time, level and so on. Runs of blanks would make empty columns; squeeze them.
  $squeezed = ised(icat($path), "s/ +/ /g");
  ranking("Levels:", tally(icut($squeezed, " ", 3)));
  ranking("Sources:", tally(icut($squeezed, " ", 4)));

  // Failed requests by address: lines of the web server with a status of 500.
  morv_file_write("log_report_errors.tmp", $squeezed);
  ranking("Failed requests:", tally(icut(igrep("log_report_errors.tmp", " web 500 "), " ", 6)));
  morv_remove("log_report_errors.tmp");

  // The fullest that the disk has been, picked out of each line by a pattern.
  lines = morv_split(morv_trim(igrep($path, "percent used")), "\n");
  worst = 0;
  for (i = 0; i < morv_list_count(lines); i++) {
    percent = morv_atoi(morv_re("s/.* ([0-9]+) percent.*/\\1/", morv_list_get(lines, i)));
    if (percent > worst) worst = percent;
  }
  printf("Disk: up to %d percent\n", worst);
  lines = morv_split(morv_trim(igrep($path, " ERROR ")), "\n");
  printf("Last error: %s\n", morv_list_get(lines, morv_list_count(lines) - 1));

  if (sample) morv_remove($path);
  return 0;
}
