#include "base/text_search.h"

#include <algorithm>
#include <cstring>

namespace vorc {

size_t FindBytes(std::string_view text, std::string_view needle, size_t from) {
  if (from > text.size() || needle.size() > text.size() - from) return std::string_view::npos;
  if (needle.empty()) return from;
  const void* hit = memmem(text.data() + from, text.size() - from, needle.data(), needle.size());
  return hit == nullptr ? std::string_view::npos
                        : static_cast<size_t>(static_cast<const char*>(hit) - text.data());
}

size_t CountByte(std::string_view text, char byte) {
  return static_cast<size_t>(std::count(text.begin(), text.end(), byte));
}

std::string_view WithoutLineEnd(std::string_view line) {
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.remove_suffix(1);
  return line;
}

}  // namespace vorc
