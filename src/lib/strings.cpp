#include "lib/strings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>

#include "base/ascii.h"
#include "base/text_search.h"

namespace vorc {

namespace {

constexpr std::string_view kBlanks = "\t\n\r ";

int32_t PositionOrNone(size_t position) {
  return position == std::string_view::npos ? -1 : static_cast<int32_t>(position);
}

std::string Mapped(std::string_view text, char (*map)(char)) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), map);
  return result;
}

std::string_view HtmlReference(char c) {
  switch (c) {
    case '"': return "&quot;";
    case '&': return "&amp;";
    case '\'': return "&#39;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    default: return {};
  }
}

std::string PaddedDigits(uint32_t value, int base, int32_t width, int32_t widest) {
  if (width < 0) return {};
  std::array<char, 32> digits;
  const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), value, base).ptr;
  const auto length = static_cast<size_t>(end - digits.data());
  const auto wanted = static_cast<size_t>(std::min(width, widest));
  return std::string(wanted > length ? wanted - length : 0, '0').append(digits.data(), length);
}

}  // namespace

int32_t MorvStrCmp(std::optional<std::string_view> a, std::optional<std::string_view> b) {
  if (!a || !b) return int32_t{a.has_value()} - int32_t{b.has_value()};
  const int order = a->compare(*b);
  return order < 0 ? -1 : order > 0;
}

int32_t MorvStrStr(std::string_view text, std::string_view needle) {
  return PositionOrNone(FindBytes(text, needle));
}

int32_t MorvSearchTxt(std::string_view text, std::string_view needle) {
  return PositionOrNone(FindBytes(MorvLower(text), MorvLower(needle)));
}

int32_t MorvStrLen(std::string_view text) {
  return static_cast<int32_t>(text.size());
}

bool MorvStartsWith(std::string_view text, std::string_view start) {
  return text.starts_with(start);
}

bool MorvEndsWith(std::string_view text, std::string_view end) {
  return text.ends_with(end);
}

std::string_view MorvSubstr(std::string_view text, int32_t start, int32_t length) {
  const auto from = static_cast<size_t>(std::max(start, 0));
  if (from >= text.size()) return {};
  return text.substr(from, length < 0 ? std::string_view::npos : static_cast<size_t>(length));
}

std::string MorvUpper(std::string_view text) {
  return Mapped(text, AsciiUpper);
}

std::string MorvLower(std::string_view text) {
  return Mapped(text, AsciiLower);
}

std::string_view MorvTrim(std::string_view text) {
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string MorvReplaceAll(std::string_view source, std::string_view search, std::string_view replacement,
                           size_t limit) {
  const size_t most = limit - 1;
  std::string result;
  size_t at = 0;
  while (!search.empty() && result.size() < most) {
    const size_t hit = FindBytes(source, search, at);
    if (hit == std::string_view::npos) break;
    result.append(source, at, hit - at).append(replacement);
    at = hit + search.size();
  }
  result.append(source.substr(at, most));
  result.resize(std::min(result.size(), most));
  return result;
}

std::string MorvHtmlEscape(std::string_view text, size_t limit) {
  std::string result;
  for (const char& c : text) {
    const std::string_view reference = HtmlReference(c);
    const std::string_view piece = reference.empty() ? std::string_view(&c, 1) : reference;
    if (result.size() + piece.size() >= limit) break;
    result += piece;
  }
  return result;
}

std::string MorvHex(uint32_t value, int32_t width) {
  return PaddedDigits(value, 16, width, 8);
}

std::string MorvBin(uint32_t value, int32_t width) {
  return PaddedDigits(value, 2, width, 32);
}

uint32_t MorvParseHex(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  if (text.starts_with("0x") || text.starts_with("0X")) text.remove_prefix(2);
  uint32_t value = 0;
  for (const char c : text) {
    const int digit = HexDigitValue(c);
    if (digit < 0) break;
    value = value << 4 | static_cast<uint32_t>(digit);
  }
  return value;
}

int32_t MorvAtoi(std::string_view text) {
  return static_cast<int32_t>(std::strtol(std::string(text).c_str(), nullptr, 10));
}

uint32_t MorvBits(uint32_t value, int32_t low, int32_t count) {
  if (low < 0 || low > 31 || count < 1) return 0;
  const uint32_t shifted = value >> low;
  return count > 31 ? shifted : shifted & ((uint32_t{1} << count) - 1);
}

}  // namespace vorc
