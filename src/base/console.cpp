#include "base/console.h"

#include <cstdio>
#include <string>

namespace vorc {

void SendOutput(std::string_view text) {
  // Kept between calls, so that a line of output costs no allocation. One thread writes.
  static std::string line;
  line.assign(text);
  line += '\n';
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fflush(stdout);
}

void MessageBox(const char* text, const char* title) {
  std::fprintf(stderr, "%s: %s\n", title, text);
}

}  // namespace vorc
