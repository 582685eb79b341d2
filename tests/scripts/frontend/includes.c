#include "include/numbers.h"
#include "include/deep/first.h"
#include <include/angles.h> // a comment may follow
#include "include/numbers.h" /* so may this one */
#include "include/guarded.h"
#include "include/guarded.h"
#include "include/comment_opens.h" /* and it may
  go on */ int behind_the_comment;
#include <stdarg.h>
int main()
{
  int x;
  printf("%d %d %d %d", NUMBER, FIRST, SECOND, ANGLES);
  printf("%d", guarded(4));
  behind_the_comment = COMMENT_OPENS; printf("%d", behind_the_comment);
#include "include/statements.inc"
  printf("%d", x);
  if (x)
#include "include/block.inc"
  return 0;
}
