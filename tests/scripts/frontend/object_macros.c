#define ONE 1
#define TWO ONE + ONE
#define PAREN (TWO)
#define EMPTY
#define TEXT "text of %s"
#define NAME printf
#define TYPE int
#define LOOP while (1)
#define BEGIN {
#define END }
#define LONG 1 + \
  2 + \
  3
#define SPACED (x)
#define MEMBER y
struct S { TYPE MEMBER; };
TYPE values[PAREN] = { ONE, TWO };
enum { E1 = PAREN, E2 };
int main()
BEGIN
  TYPE x; struct S s; EMPTY
  x = TWO * 3; printf("%d", x);
  x = PAREN * 3; printf("%d", x);
  x = LONG; printf("%d", x);
  x = 4; printf("%d", SPACED); EMPTY
  NAME(TEXT, "a macro");
  LOOP BEGIN break; END
  s.MEMBER = 6; printf("%d %d", s.y, s.MEMBER);
  printf("%d %d %d", values[ONE], E2, sizeof(TYPE));
  printf("ONE is text in a text: %d", 'O');
  $ONE = 7; printf("%d", $ONE);
  return 0;
END
