#include "netstore/statement.h"

#include <strings.h>

#include <algorithm>

namespace vorc {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\f\v";
constexpr size_t kNameLimit = 63;

std::string_view Trimmed(std::string_view text) {
  const size_t start = text.find_first_not_of(kBlanks);
  if (start == std::string_view::npos) return {};
  return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

// What stands behind a first word and before a semicolon at the end.
std::optional<std::string_view> Behind(std::string_view word, std::string_view text) {
  text = Trimmed(text);
  if (text.size() <= word.size() || strncasecmp(text.data(), word.data(), word.size()) != 0) return {};
  if (kBlanks.find(text[word.size()]) == std::string_view::npos) return {};
  text = text.substr(word.size());
  if (text.ends_with(';')) text.remove_suffix(1);
  return Trimmed(text);
}

// The text behind its first blank, semicolon or comment.
std::string_view WithoutFirst(std::string_view text) {
  if (text.starts_with("--")) return text.substr(std::min(text.find('\n'), text.size()));
  if (text.starts_with("/*")) {
    const size_t end = text.find("*/", 2);
    return end == std::string_view::npos ? std::string_view() : text.substr(end + 2);
  }
  return text.substr(1);
}

}  // namespace

std::optional<std::string_view> UsedDatabase(std::string_view text) {
  return Behind("use", text);
}

std::optional<Login> LoginOf(std::string_view text) {
  const auto both = Behind("login", text);
  if (!both) return std::nullopt;
  const size_t comma = both->find(',');
  if (comma == std::string_view::npos) return Login{*both, {}};
  return Login{both->substr(0, comma), both->substr(comma + 1)};
}

bool IsDatabaseName(std::string_view name) {
  if (name.empty() || name.size() > kNameLimit || name[0] == '.' || name[0] == '-') return false;
  return std::ranges::all_of(name, [](unsigned char byte) {
    return std::isalnum(byte) != 0 || byte == '_' || byte == '-' || byte == '.' || byte >= 0x80;
  });
}

bool HasStatement(std::string_view text) {
  while (!text.empty()) {
    const bool skipped = kBlanks.find(text[0]) != std::string_view::npos || text[0] == ';' ||
                         text.starts_with("--") || text.starts_with("/*");
    if (!skipped) return true;
    text = WithoutFirst(text);
  }
  return false;
}

std::string Failure(std::string_view text) {
  text = Trimmed(text.substr(0, text.find('\n')));
  return "Failed: " + std::string(text) + (text.ends_with('.') ? "" : ".");
}

std::string CountOfRows(int64_t count) {
  return std::to_string(count) + (count == 1 ? " row" : " rows");
}

}  // namespace vorc
