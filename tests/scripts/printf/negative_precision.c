// A negative precision from an argument counts as none, a negative width turns to the left.
int main()
{
  printf("[%.*d] [%.*s] [%.*f] [%.*x]\n", 0 - 1, 5, 0 - 1, "abc", 0 - 1, 2.5, 0 - 3, 255);
  printf("[%*.*f] [%-*.*d]\n", 0 - 9, 0 - 1, 2.5, 4, 0 - 2, 7);
  return 0;
}
