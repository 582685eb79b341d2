#define ADD3(a, b, c) ((a) + (b) + (c))
#define SHOW(format, value) printf(format, value)
int sum(int a, int b) { return a + b; }
int main()
{
  printf("%d", ADD3(
    1, // one
    2 /* two */,
    sum(3,
        4)
  ));
  SHOW("%d", ADD3(sum(1, 2),
                  (3), ADD3(1, 1, 1)));
  SHOW /* apart */ ("%d"
    , 5);
  SHOW
  ("%s", "end");
  return 0;
}
