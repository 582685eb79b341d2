// A small database in a folder: tables, a transaction that is undone, a report.
int stock;

int run(char *sql)
{
  int result;
  result = morv_sql_query(stock, sql);
  if (morv_starts_with(morv_sql_status(result), "Failed")) printf("%s", morv_sql_status(result));
  morv_sql_free(result);
  return 0;
}

int report(char *title)
{
  int rows;
  printf("%s", title);
  rows = morv_sql_query(stock, "select fruit, sum(kilos) as total, count(*) as boxes from box group by fruit order by fruit");
  while (morv_sql_next(rows)) {
    printf("  %-6s %5s kg in %s", morv_sql_get(rows, "fruit"), morv_sql_get(rows, "total"), morv_sql_get(rows, "boxes"));
  }
  morv_sql_free(rows);
  return 0;
}

int main()
{
  stock = morv_sql_connect("stock");
  if (stock == 0) {
    printf("no databases here");
    return 1;
  }
  run("create table kind(fruit text primary key)");
  run("create table box(fruit text references kind, kilos real check (kilos > 0))");
  run("insert into kind values ('apple'), ('pear'), ('plum')");
  run("insert into box values ('apple', 12.5), ('pear', 8), ('apple', 10)");
  report("In the morning");

  run("insert into box values ('plum', 3); insert into box values ('melon', 7)");
  run("insert into box values ('pear', -1)");
  report("After a delivery that failed");

  run("begin");
  run("delete from box where fruit = 'apple'");
  run("rollback");
  run("insert into box values ('plum', 4.25)");
  report("In the evening");
  morv_sql_disconnect(stock);
  return 0;
}
