int main()
{
  printf("a");
  printf("b\n");
  printf("");
  printf("\n");
  printf("c\n\nd");
  printf("%d of %d\r%s\n", 1, 2, "behind a return");
  printf("%5s|%-5s|%.1s|%05.1f|%+d|% d|%#x|%c%c\n", "ab", "ab", "ab", 2.25, 5, 5, 255, 72, 105);
  printf("%s %d %g [%s] [%d]\n", 2.5, 3.9, 3, "text");
  printf("%d %s\n", "text", 7, "superfluous");
  printf("100%% %q %\n");
  iprint("n=", 5, " d=", 2.5, " ", "t");
  iprint("");
  printf("%s\n", isprint(1, "+", 1.25) + "!");
  return 0;
}
