int name(int v)
{
  switch (v) {
    default: printf("default\n"); break;
    case 1: printf("one\n");
    case 2: printf("two\n");
  }
  return 0;
}
int main()
{
  long wide;
  name(1); name(2); name(3);
  wide = 65536; wide *= 65536; wide += 2;
  switch (wide) { case 2: printf("low half 2\n"); break; default: printf("whole\n"); }
  return 0;
}
