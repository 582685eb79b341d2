#ifndef GUARDED
#define GUARDED
int guarded(int a) {
  return a + 1;
}
#endif
