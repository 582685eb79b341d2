int main()
{
  printf("one"); printf("two\n"); printf("three\nfour"); printf("five\n\nseven\n");
  printf(""); printf("\n"); printf("a\r\nb"); printf("\n\n");
  printf("tab\there"); printf("quote \" and \' and \\"); printf("percent %% %d%%", 5);
  printf("%"); printf("end %"); printf("%5"); printf("%-08.3"); printf("%l"); printf("x%d%", 4);
  printf("%y"); printf("%5y|%-3k|%.2q"); printf("%5%|"); printf("%n|%m|%S|%D");
  printf("%d\n%s\n%c", 1, "two", '3');
  printf("%s", "inner\nline"); printf("[%s]", "tab\tin"); printf("%c|", '\n');
  printf(); printf(5); printf(2.5); $f = "from %s"; printf($f, "variable"); printf("[\\n\\ty\\q\\\\\\\"]"); printf("a" + "b%d", 1);
  iprint("i", 1, 2.5, 'c', "t"); iprint(); iprint(""); iprint("a\nb"); iprint(0.1 + 0.2, 1000000.0);
  printf("[%s] [%s] [%d]", isprint("x", 1, 2.50), morv_concat(), morv_strlen(isprint(100000000, "")));
  return 0;
}
