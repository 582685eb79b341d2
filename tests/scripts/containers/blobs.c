int main()
{
  int b;
  b = morv_bin_read("blobs.bin");
  printf("%d %d\n", b, morv_bin_size(b));
  printf("%d %d %d %d\n", morv_bin_get(b, 0), morv_bin_get(b, 1), morv_bin_get(b, -1), morv_bin_get(b, 15));
  printf("%d %d %d\n", morv_bin_int32(b, 2), morv_bin_int32(b, -1), morv_bin_int32(b, 12));
  printf("%d\n", morv_bin_int32(b, 11));
  printf("%f %f\n", morv_bin_float(b, 6), morv_bin_float(b, 12));
  printf("%d %d %d\n", morv_bin_find(b, "tail"), morv_bin_find(b, "tails"), morv_bin_find(b, ""));
  printf("%d\n", morv_bin_free(b));
  printf("%d\n", morv_bin_free(b));
  printf("%d %d\n", morv_bin_read("no such file"), morv_bin_read("."));
  printf("%d\n", morv_bin_read("empty.bin"));
  printf("%d %d\n", morv_bin_size(2), morv_bin_find(2, ""));
  return 0;
}
