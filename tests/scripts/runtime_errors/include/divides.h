int seven = 7;
int divide(int by) {
  return seven / by;
}
