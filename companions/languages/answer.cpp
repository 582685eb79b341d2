#include "languages/answer.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace vorc {

namespace {

// The longest start of a text within the limit that ends between two characters.
size_t CutAt(std::string_view text, size_t limit) {
  if (text.size() <= limit) return text.size();
  while (limit > 0 && (static_cast<unsigned char>(text[limit]) & 0xC0) == 0x80) --limit;
  return limit;
}

}  // namespace

void Answer::Append(std::string_view text) {
  text_.append(text.substr(0, CutAt(text, limit_ - std::min(limit_, text_.size()))));
}

void Answer::Fail(std::string_view reason) {
  const size_t room = limit_ - std::min(limit_, reason.size() + 1);
  text_.resize(CutAt(text_, room));
  if (!text_.empty() && text_.back() != '\n') text_ += '\n';
  Append(reason);
}

void CopyOut(std::string_view text, char* out, int64_t size) {
  if (out == nullptr || size <= 0) return;
  const size_t length = CutAt(text, static_cast<size_t>(size) - 1);
  std::memcpy(out, text.data(), length);
  out[length] = '\0';
}

std::optional<std::string_view> NameOfJson(std::string_view name) {
  constexpr std::string_view kSuffix = ":json";
  if (!name.ends_with(kSuffix)) return std::nullopt;
  return name.substr(0, name.size() - kSuffix.size());
}

std::optional<double> NumberIn(const std::string& text) {
  char* end = nullptr;
  const double number = std::strtod(text.c_str(), &end);
  if (end == text.c_str()) return std::nullopt;
  const size_t rest = static_cast<size_t>(end - text.c_str());
  if (text.find_first_not_of(" \t\r\n", rest) != std::string::npos) return std::nullopt;
  return number;
}

std::string LimitReached(int32_t milliseconds) {
  return "time limit of " + std::to_string(milliseconds) + " ms reached";
}

}  // namespace vorc
