int main()
{
  char b[6]; char *p; char *none; int i; double d; char c;
  b[0] = 'b'; b[1] = 'u'; b[2] = 0; p = "pointer"; none = 0; c = 200; d = 1.0 / 3; $s = "dollar"; $n = 7;
  printf("%s %s %s %s %s\n", b, p, $s, $n, "literal");
  printf("[%8s] [%-8s] [%.3s] [%8.2s] [%-8.2s] [%.0s]\n", "abcdef", "abcdef", "abcdef", "abcdef", "abcdef", "abcdef");
  printf("%s %s %s %s %s %s\n", 42, 0 - 7, d, 100000.0, 1234567.0, c);
  printf("[%5s] [%-5s] [%.2s]\n", 42, 2.5, 12345);
  printf("[%s] [%d] [%g] [%x]\n");
  printf("%s\n", "extra", 1, 2);
  printf("[%s]\n", none);
  $s = "";
  for (i = 0; i < 70; i++) $s += "0123456789";
  printf("%s\n", $s);
  printf("%705s|\n", $s);
  printf("%600d|\n", 5);
  printf("%.600d|\n", 5);
  printf("%600s|\n", 5);
  printf("%600s|\n");
  return 0;
}
