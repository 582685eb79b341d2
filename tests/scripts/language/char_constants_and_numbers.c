int main()
{
  printf("%d %d %d %d\n", 017, 0x1F, 0xffu, 12L);
  printf("%d %d %d %d %d\n", 'a', '\n', '\x41', '\101', ' ');
  printf("%d %d %d %d %d\n", '\'', '"', '\\', '\0', '\t');
  printf("%g %g %g\n", 1.5, .5, 2.5f);
  printf("%d %d\n", true, false);
  printf("[%s] [%s] %d\n", "a\tb", "\x\q", morv_strlen("a\nb\\"));
  return 0;
}
