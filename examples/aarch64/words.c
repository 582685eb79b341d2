// Words of a text, for AArch64. host.c maps the code and calls it; docs/aarch64.md tells how.
char *names[] = {"none", "one", "some"};
int calls = 0;

// Calls `seen` with the length of each word, and answers how many there are.
int count_words(char *text, int (*seen)(int length))
{
  int count = 0; int length = 0; int i;
  calls++;
  for (i = 0; ; i++) {
    if (text[i] != 0 && text[i] != ' ') { length++; continue; }
    if (length > 0) { seen(length); count++; }
    length = 0;
    if (text[i] == 0) return count;
  }
}

char *name_of(int count)
{
  calls++;
  return names[count > 2 ? 2 : count];
}

int calls_so_far(void)
{
  return calls;
}
