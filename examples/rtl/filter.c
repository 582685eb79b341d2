// A fixed-point filter and an integer square root: the first needs no clock, the second one for each try.
int smooth(int sample, int before) {
  int weighted;
  weighted = sample * 77 + before * 179;
  return weighted >> 8;
}

function isqrt($value) {
  $root = 0;
  while (($root + 1) * ($root + 1) <= $value) {
    $root = $root + 1;
  }
  return $root;
}

int main() {
  printf("%d %d\n", smooth(100, 7), isqrt(255));
  return 0;
}
