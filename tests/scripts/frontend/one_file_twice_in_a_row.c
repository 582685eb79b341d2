int total;
#include "count.h"
#include "count.h"
#include "count.h"
int main() {
  printf("%d\n", total);
  return 0;
}
