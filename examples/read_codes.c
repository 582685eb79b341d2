// Reads the codes in all pictures of a folder: tickets, shelf marks and goods as a camera saw them.
//
//   vorc -morv -morvquiet read_codes.c [folder]
//
// Without an argument it takes the folder pictures beside it.

int read_picture(char *path, char *name)
{
  $text = morv_qrcode_read(path);
  if (morv_strlen($text) > 0) {
    printf("%-12s QR code   %s", name, $text);
    return 1;
  }
  $text = morv_barcode_read(path);
  if (morv_strlen($text) > 0) {
    printf("%-12s %-9s %s", name, morv_barcode_kind(), $text);
    return 1;
  }
  printf("%-12s nothing to read", name);
  return 0;
}

int main()
{
  int i; int names; int found;
  $folder = morv_trim(morv_getparam("1"));
  if (morv_strlen($folder) == 0) $folder = "pictures";
  names = morv_glob($folder + "/*");
  found = 0;
  for (i = 0; i < morv_list_count(names); i++) {
    $name = morv_list_get(names, i);
    found = found + read_picture(morv_concat($folder, "/", $name), $name);
  }
  printf("%d of %d pictures hold a code", found, morv_list_count(names));
  return 0;
}
