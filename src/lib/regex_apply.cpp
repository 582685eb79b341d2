#include "lib/regex_apply.h"

#include <algorithm>

#include "lib/regex.h"
#include "lib/regex_replacement.h"

namespace vorc {

namespace {

constexpr size_t kPartLimit = 511;

// Takes what stands before the next slash, or everything. No backslash protects a slash here.
std::string_view TakePart(std::string_view& rest) {
  const std::string_view part = rest.substr(0, rest.find('/'));
  rest.remove_prefix(std::min(part.size() + 1, rest.size()));
  return part.substr(0, kPartLimit);
}

// `\1` to `\9` name groups, `\0` is nothing; any other backslash stays, with what follows it.
RegexReplacement ParseReplacement(std::string_view source) {
  RegexReplacement replacement;
  for (size_t i = 0; i < source.size(); ++i) {
    const char next = i + 1 < source.size() ? source[i + 1] : '\0';
    if (source[i] != '\\' || next == '\0') {
      replacement.AddByte(source[i]);
      continue;
    }
    ++i;
    if (next >= '1' && next <= '9') {
      replacement.AddReference(static_cast<size_t>(next - '0'));
    } else if (next != '0') {
      replacement.AddText(source.substr(i - 1, 2));
    }
  }
  return replacement;
}

std::string Substitute(std::string_view pattern, std::string_view replacement_source, std::string_view text,
                       size_t limit) {
  const RegexReplacement replacement = ParseReplacement(replacement_source);
  RegexMatch match;
  if (!Regex(pattern, replacement.GroupSlots()).FindFirst(text, match))
    return std::string(text.substr(0, limit));
  const auto start = static_cast<size_t>(match.whole.start);
  std::string result(text.substr(0, std::min(start, limit)));
  replacement.AppendTo(result, text, match, limit);
  result.append(text.substr(start + static_cast<size_t>(match.whole.length), limit));
  if (result.size() > limit) result.resize(limit);
  return result;
}

std::string Matched(std::string_view pattern, std::string_view text, size_t limit) {
  RegexMatch match;
  if (!Regex(pattern, 0).FindFirst(text, match)) return {};
  return std::string(match.whole.In(text).substr(0, limit));
}

}  // namespace

std::string MorvRegexApply(std::string_view pattern, std::string_view text, size_t capacity) {
  const size_t limit = capacity == 0 ? 0 : capacity - 1;
  const bool closed = pattern.find('/', 2) != std::string_view::npos;
  std::string_view rest = pattern.substr(std::min<size_t>(2, pattern.size()));
  if (closed && pattern.starts_with("s/")) {
    const std::string_view searched = TakePart(rest);
    return Substitute(searched, TakePart(rest), text, limit);
  }
  if (closed && pattern.starts_with("m/")) return Matched(TakePart(rest), text, limit);
  // A bare pattern is read as "m/.../", of which 511 bytes are looked at, the "m/" included.
  std::string_view bare = pattern.substr(0, kPartLimit - 2);
  return Matched(TakePart(bare), text, limit);
}

}  // namespace vorc
