// The rows of a table, by names and by numbers of its columns.
//
//   vorc -morv -morvquiet list_rows.c /path/to/database
//
// It needs the client library that docs/builtins/sql.md names.

int main()
{
  int berths; int rows;
  berths = morv_sql_connect(morv_getparam("1"));
  if (berths == 0) {
    printf("no database\n");
    morv_exit(1);
  }
  rows = morv_sql_query(berths, "select berth, ship from berths;");
  printf("%d rows\n", morv_sql_count(rows));
  while (morv_sql_next(rows)) printf("%s: %s\n", morv_sql_get(rows, "berth"), morv_sql_get(rows, 2));
  morv_sql_free(rows);
  morv_sql_disconnect(berths);
  return 0;
}
