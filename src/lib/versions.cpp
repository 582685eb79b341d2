#include "lib/versions.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

#include "lib/sandbox.h"

namespace vorc {

namespace {

constexpr int kMostLines = 200;
constexpr size_t kLineCapacity = 1024;
constexpr size_t kKeyCapacity = 128;
constexpr std::string_view kDigits = "0123456789";

/// Where the text behind `key` begins, if it stands alone there. A name that goes on, such as
/// version2 for version, is another field.
std::optional<std::string_view> TextBehind(std::string_view line, std::string_view key) {
  for (size_t at = line.find(key); at != std::string_view::npos; at = line.find(key, at + 1)) {
    const std::string_view rest = line.substr(at + key.size());
    if (rest.empty() || std::string_view("\t\n\r :").find(rest.front()) != std::string_view::npos) {
      return rest;
    }
  }
  return std::nullopt;
}

std::string_view FieldValue(std::string_view text) {
  if (text.starts_with(':')) text.remove_prefix(1);
  text.remove_prefix(std::min(text.size(), text.find_first_not_of(" \t")));
  const size_t semicolon = text.find(';');
  text = text.substr(0, semicolon != std::string_view::npos ? semicolon : text.find_first_of("\r\n"));
  return text.substr(0, text.find_last_not_of(" \t") + 1);
}

/// The next number of a version, without leading zeros; empty for 0 and behind the last.
std::string_view TakeNumber(std::string_view& version) {
  version.remove_prefix(std::min(version.size(), version.find_first_of(kDigits)));
  std::string_view number = version.substr(0, version.find_first_not_of(kDigits));
  version.remove_prefix(number.size());
  number.remove_prefix(std::min(number.size(), number.find_first_not_of('0')));
  return number;
}

}  // namespace

std::string MorvLibField(const std::string& file, std::string_view name) {
  std::string key = "@morv-";
  key += name.substr(0, kKeyCapacity - 1 - key.size());
  const File input = MorvSafeFopen(file, "rb");
  if (input == nullptr) return {};
  std::array<char, kLineCapacity> line{};
  for (int n = 0; n < kMostLines; ++n) {
    if (std::fgets(line.data(), static_cast<int>(line.size()), input.get()) == nullptr) break;
    if (const auto text = TextBehind(line.data(), key)) return std::string(FieldValue(*text));
  }
  return {};
}

std::string MorvLibVersion(const std::string& file) {
  return MorvLibField(file, "version");
}

int MorvVersionCmp(std::string_view a, std::string_view b) {
  while (!a.empty() || !b.empty()) {
    const std::string_view left = TakeNumber(a);
    const std::string_view right = TakeNumber(b);
    if (left.size() != right.size()) return left.size() < right.size() ? -1 : 1;
    if (const int order = left.compare(right); order != 0) return order < 0 ? -1 : 1;
  }
  return 0;
}

}  // namespace vorc
