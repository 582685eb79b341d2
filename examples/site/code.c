#!/usr/bin/env morv

/* A code as a picture. */
int main()
{
  $svg = morv_qrcode_svg(morv_getparam("text"), 5);
  if (morv_strlen($svg) == 0) {
    printf("Status: 400 Bad Request\nContent-Type: text/plain\n\n");
    printf("A code needs a text of 1 to 2331 bytes.\n");
  } else {
    printf("Content-Type: image/svg+xml\n\n");
    printf("%s\n", $svg);
  }
  return 0;
}
