#include "lib/query.h"

#include "base/ascii.h"

namespace vorc {

namespace {

constexpr size_t kQueryLimit = 1023;

std::string DecodeQueryValue(std::string_view value) {
  std::string text;
  for (size_t i = 0; i < value.size() && text.size() < kQueryLimit; ++i) {
    if (value[i] == '%' && i + 2 < value.size() && HexDigitValue(value[i + 1]) >= 0 &&
        HexDigitValue(value[i + 2]) >= 0) {
      text += static_cast<char>(HexDigitValue(value[i + 1]) * 16 + HexDigitValue(value[i + 2]));
      i += 2;
    } else {
      text += value[i] == '+' ? ' ' : value[i];
    }
  }
  return text;
}

}  // namespace

std::string MorvGetQueryParam(std::string_view query, std::string_view name) {
  if (name.empty()) return "";
  while (!query.empty()) {
    if (query.starts_with(name) && query.substr(name.size()).starts_with('=')) {
      query.remove_prefix(name.size() + 1);
      return DecodeQueryValue(query.substr(0, query.find('&')));
    }
    const size_t end = query.find('&');
    if (end == std::string_view::npos) break;
    query.remove_prefix(end + 1);
  }
  return "";
}

}  // namespace vorc
