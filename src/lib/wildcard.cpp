#include "lib/wildcard.h"

#include <cstddef>

#include "base/ascii.h"

namespace vorc {

// Only the latest `*` ever needs a second try: an earlier one that took more could do no better.
bool morv_util_wild(std::string_view pattern, std::string_view name) {
  if (pattern.empty()) return true;
  constexpr size_t kNone = std::string_view::npos;
  size_t p = 0, n = 0, star = kNone, star_end = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      star_end = n;
    } else if (p < pattern.size() && (pattern[p] == '?' || AsciiLower(pattern[p]) == AsciiLower(name[n]))) {
      ++p;
      ++n;
    } else if (star != kNone) {
      p = star + 1;
      n = ++star_end;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

}  // namespace vorc
