enum Kind { FIRST, SEVENTH = 7 };
#define THREE 3
int main()
{
  int i; char c;
  for (i = 0 - 2; i < 9; i++) {
    switch (i) {
      case -2: printf("minus two\n"); break;
      case 'a' - 96: printf("one\n"); break;
      case 1 + 1: case THREE: printf("two or three: %d\n", i); break;
      case SEVENTH: printf("seven, then ");
      default: printf("default %d\n", i); break;
      case FIRST: { printf("zero\n"); break; }
      case 8: if (i == 8) { printf("eight\n"); break; } printf("not reached\n");
    }
  }
  c = 'b';
  switch (c) { case 'a': printf("A\n"); case 'b': printf("B\n"); case 'c': printf("C\n"); }
  switch (5) { default: printf("in front\n"); case 1: printf("falls on\n"); }
  switch (9) { case 1: printf("never\n"); }
  switch (i = 4) { case 4: switch (i + 1) { case 5: printf("inner\n"); break; } printf("outer goes on\n"); break; case 5: printf("never\n"); }
  return 0;
}
