#include "include/with_mark.h"
#include "include/open_comment.h"
itn k;
k = 1;
itn g(int x) { return x; }
int f(int a, int b) { return a; }
struct S 5;
struct S *;
int ↑↓ = 3;
int main() {
  itn k = 1;
  k = f(1 2, 3 4);
  printf("open);
  if (k) {
    int list[2] = {1,
#define CALL(a, b) a
    2 }; CALL(1
