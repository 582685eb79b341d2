// Prints have a numbering of their own, and numbers are not used again.
int main()
{
  int list; int first; int second;
  list = morv_list_new();
  morv_file_write("blank.pgm", "P5 3 3 255 123456789");
  first = morv_afis_extract("blank.pgm");
  second = morv_afis_extract("blank.pgm");
  printf("%d %d %d", list, first, second);
  morv_afis_free(first);
  morv_afis_free(first);
  morv_afis_free(77);
  morv_afis_free("1");
  printf("%d %d", morv_afis_minutiae(first), morv_afis_minutiae(second));
  printf("%d", morv_afis_extract("blank.pgm"));
  printf("%d %d %d %d", morv_afis_minutiae(0), morv_afis_minutiae(-1), morv_afis_minutiae(4096), morv_afis_minutiae("2"));
  printf("%f %f %f", morv_afis_match(first, second), morv_afis_match(second, first), morv_afis_match("2", second));
  morv_file_write("cut.pgm", "P5 30 30 255 123456789");
  morv_file_write("huge.pgm", "P5 9000 7200 255 123456789");
  printf("%d %d %d %d", morv_afis_extract("cut.pgm"), morv_afis_extract("huge.pgm"), morv_afis_extract("."), morv_afis_extract(5));
  printf("%f %f", morv_afis_match_files("blank.pgm", "cut.pgm"), morv_afis_match_files(1, "blank.pgm"));
  printf("%f", morv_afis_match_files("blank.pgm", "blank.pgm"));
  return 0;
}
