int main()
{
  ifprint("log.txt", "a", 1, 2.5); ifprint("log.txt"); ifprint("log.txt", "last");
  printf("%d [%s] [%s] [%s]\n", ifile_lines("log.txt"), ifile_line("log.txt", 1), ifile_line("log.txt", 2), ifile_line("log.txt", 3));
  ifprint(5, "nothing"); ifprint("no/such/folder/f.txt", "nothing"); ifprint();
  printf("%d\n", ifile_size("log.txt"));
  return 0;
}
