// A typeless variable takes an integer result at four bytes; a long keeps all of it.
int main()
{
  int z; long l;
  for (z = 0; z < 3; z++) {
    $y = 65536; $y *= 65536; l = 65536; l *= 65536; printf("%d %lld\n", $y, l);
    $y = 2147483647; $y += 1; l = 2147483647; l += 1; printf("%d %lld\n", $y, l);
    $y = 0; $y -= 1; printf("%d %d\n", $y, $y < 0);
    printf("%s\n", ($t = "a") + ($t = "b")); printf("%s\n", $t);
  }
  return 0;
}
