#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "lib/regex.h"
#include "lib/regex_apply.h"

// The first line is a pattern, the rest is the text it is sought in.

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

void RequireWithin(const vorc::RegexSpan& span, ptrdiff_t start, ptrdiff_t end) {
  Require(span.start >= start && span.length >= 0 && span.start + span.length <= end);
}

void CheckMatch(const vorc::RegexMatch& match, std::string_view text) {
  RequireWithin(match.whole, 0, static_cast<ptrdiff_t>(text.size()));
  for (const vorc::RegexSpan& group : match.groups) {
    if (group.start == -1 && group.length == -1) continue;
    RequireWithin(group, match.whole.start, match.whole.start + match.whole.length);
  }
}

// What is stored must not change what is matched.
void CheckWithoutGroups(std::string_view pattern, std::string_view text, bool found,
                        const vorc::RegexMatch& match) {
  vorc::RegexMatch plain;
  Require(vorc::Regex(pattern, 0).FindFirst(text, plain) == found);
  Require(plain.whole.start == match.whole.start && plain.whole.length == match.whole.length);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::string_view pattern = input.substr(0, input.find('\n'));
  const std::string_view text = input.substr(std::min(pattern.size() + 1, input.size()));
  vorc::RegexMatch match;
  const bool found = vorc::Regex(pattern).FindFirst(text, match);
  if (found) CheckMatch(match, text);
  CheckWithoutGroups(pattern, text, found, match);
  Require(vorc::MorvRegexApply(pattern, text, 64).size() < 64);
  return 0;
}
