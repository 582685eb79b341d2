#include "include/divides.h"
int main() {
  printf("%d\n", divide(2));

  divide(0);
  return 0;
}
