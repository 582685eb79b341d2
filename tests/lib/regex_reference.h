#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "lib/regex.h"

namespace vorc {

/// A matcher that just tries everything in order: slow, and simple enough to be believed.
class ReferenceRegex {
 public:
  explicit ReferenceRegex(std::string_view pattern) : tree_(ParseRegex(pattern)) {}

  /// True if the last search was broken off, since trying everything can take for ever.
  bool gave_up() const { return steps_ > kMostSteps; }

  bool FindFirst(std::string_view text, RegexMatch& match) {
    text_ = text;
    steps_ = 0;
    for (size_t start = 0; tree_.ok && start <= text.size(); ++start) {
      match = {};
      const auto accept = [&](size_t end) {
        match.whole = {static_cast<ptrdiff_t>(start), static_cast<ptrdiff_t>(end - start)};
        return true;
      };
      match_ = &match;
      if (Try(tree_.root, start, accept)) return true;
    }
    return false;
  }

 private:
  static constexpr int kMostSteps = 20000;
  using Rest = std::function<bool(size_t)>;

  bool Consume(bool fits, size_t at, const Rest& rest) { return at < text_.size() && fits && rest(at + 1); }

  bool Loop(const RegexNode& node, size_t at, const Rest& rest, bool may_stop) {
    const auto again = [&](size_t end) { return end == at ? rest(end) : Loop(node, end, rest, true); };
    return Try(node.sub, at, again) || (may_stop && rest(at));
  }

  bool Group(const RegexNode& node, size_t at, const Rest& rest) {
    RegexSpan spare;
    RegexSpan& span = node.group < static_cast<int>(kRegexGroupSlots)
                          ? match_->groups[static_cast<size_t>(node.group)]
                          : spare;
    return Try(node.sub, at, [&](size_t end) {
      const RegexSpan old = span;
      span = {static_cast<ptrdiff_t>(at), static_cast<ptrdiff_t>(end - at)};
      if (rest(end)) return true;
      span = old;
      return false;
    });
  }

  bool Try(int32_t index, size_t at, const Rest& rest) {
    if (++steps_ > kMostSteps) return false;
    if (index < 0) return rest(at);
    const RegexNode& node = tree_.nodes[static_cast<size_t>(index)];
    const auto byte = static_cast<uint8_t>(at < text_.size() ? text_[at] : 0);
    switch (node.kind) {
      case RegexNodeKind::kLiteral: return Consume(byte == node.literal, at, rest);
      case RegexNodeKind::kAny: return Consume(true, at, rest);
      case RegexNodeKind::kSet: return Consume(node.set[byte], at, rest);
      case RegexNodeKind::kStar: return Loop(node, at, rest, true);
      case RegexNodeKind::kPlus: return Loop(node, at, rest, false);
      case RegexNodeKind::kOptional: return Try(node.sub, at, rest) || rest(at);
      case RegexNodeKind::kAlternate: return Try(node.sub, at, rest) || Try(node.alt, at, rest);
      case RegexNodeKind::kConcat:
        return Try(node.sub, at, [&](size_t end) { return Try(node.next, end, rest); });
      case RegexNodeKind::kGroupOpen: return Group(node, at, rest);
      case RegexNodeKind::kTextStart: return at == 0 && rest(at);
      case RegexNodeKind::kTextEnd: return at == text_.size() && rest(at);
      default: return rest(at);
    }
  }

  RegexTree tree_;
  std::string_view text_;
  int steps_ = 0;
  RegexMatch* match_ = nullptr;
};

}  // namespace vorc
