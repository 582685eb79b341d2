#include "base/format.h"

#include <cstdarg>
#include <cstdio>

namespace vorc {

std::string Format(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  va_list again;
  va_copy(again, arguments);
  char small[256];
  const int length = std::vsnprintf(small, sizeof small, format, arguments);
  va_end(arguments);
  std::string text;
  if (length >= 0 && static_cast<size_t>(length) < sizeof small) {
    text.assign(small, static_cast<size_t>(length));
  } else if (length >= 0) {
    text.resize(static_cast<size_t>(length));
    std::vsnprintf(text.data(), text.size() + 1, format, again);
  }
  va_end(again);
  return text;
}

std::string Clip(std::string text, size_t limit, const char* tail) {
  if (text.size() <= limit) return text;
  text.resize(limit);
  return text += tail;
}

}  // namespace vorc
