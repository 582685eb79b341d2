/* Maps an image of AArch64 code and calls its functions: a64_host IMAGE < LINES

   A line is the offset of a function and its arguments. Each call's x0 is printed. The image is mapped at an
   address that isn't the same in two runs, and copied, so that what it changes stays in the run. */

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>

#define MOST 12

typedef long (*Function)(long, long, long, long, long, long, long, long, long, long, long, long);

int main(int argc, char **argv) {
  FILE *file = argc < 2 ? NULL : fopen(argv[1], "rb");
  if (file == NULL) return 2;
  fseek(file, 0, SEEK_END);
  long size = ftell(file);
  rewind(file);
  char *image = mmap(NULL, (size_t)size, PROT_READ | PROT_WRITE | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (image == MAP_FAILED || fread(image, 1, (size_t)size, file) != (size_t)size) return 2;
  __builtin___clear_cache(image, image + size);
  char line[1024];
  while (fgets(line, sizeof line, stdin) != NULL) {
    long a[MOST] = {0};
    char *at = line;
    long offset = strtol(at, &at, 0);
    for (int i = 0; i < MOST && *at != '\n'; ++i) a[i] = (long)strtoul(at, &at, 0);
    Function function = (Function)(image + offset);
    printf("%ld\n", function(a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8], a[9], a[10], a[11]));
    fflush(stdout);
  }
  return 0;
}
