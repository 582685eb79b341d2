// Maps the image of words.c and calls its functions: host IMAGE COUNT_WORDS NAME_OF CALLS_SO_FAR
// The numbers are the functions' offsets in the image, as the listing tells them.
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <unistd.h>

static int longest;

static int seen(int length)
{
  if (length > longest) longest = length;
  return 0;
}

int main(int argc, char **argv)
{
  if (argc != 5) return 2;
  int file = open(argv[1], O_RDONLY);
  size_t size = (size_t)lseek(file, 0, SEEK_END);
  char *image = mmap(NULL, size, PROT_READ | PROT_WRITE | PROT_EXEC, MAP_PRIVATE, file, 0);
  if (image == MAP_FAILED) return 1;

  int (*count_words)(const char *, int (*)(int)) = (void *)(image + strtol(argv[2], NULL, 0));
  char *(*name_of)(int) = (void *)(image + strtol(argv[3], NULL, 0));
  int (*calls_so_far)(void) = (void *)(image + strtol(argv[4], NULL, 0));

  int count = count_words("a handful of words", seen);
  printf("%d words, the longest of %d letters: %s\n", count, longest, name_of(count));
  printf("%d calls\n", calls_so_far());
  return 0;
}
