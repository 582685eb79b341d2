#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vorc {

/// A pattern that needs more nodes than this matches nothing. Since each pair of parentheses takes
/// two nodes, this also bounds how deep groups can nest.
inline constexpr size_t kRegexNodeLimit = 256;

using ByteSet = std::bitset<256>;

enum class RegexNodeKind : uint8_t {
  kLiteral = 0,    ///< the byte `literal`
  kAny = 1,        ///< any byte, newline included
  kSet = 2,        ///< a byte out of `set`
  kStar = 3,       ///< `sub`, as often as possible
  kPlus = 4,       ///< `sub` once, then as often as possible
  kOptional = 5,   ///< `sub`, else nothing
  kConcat = 6,     ///< `sub`, then `next`
  kAlternate = 7,  ///< `sub`, else `alt`; -1 is an empty branch
  kGroupOpen = 8,  ///< start of group `group` around `sub` (-1 if empty); `next` is its end
  kGroupClose = 9,
  kTextStart = 10,
  kTextEnd = 11,
  kAccept = 12,
};

struct RegexNode {
  RegexNodeKind kind = RegexNodeKind::kAccept;
  uint8_t literal = 0;
  int32_t next = -1;
  int32_t sub = -1;
  int32_t alt = -1;
  int32_t group = -1;  ///< number of a group, counted from 0 by opening parentheses
  ByteSet set;
};

/// A pattern as a tree. Valid only while `ok`.
struct RegexTree {
  std::vector<RegexNode> nodes;
  int32_t root = -1;  ///< -1 for a pattern that asks for nothing
  int32_t accept = -1;
  int32_t groups = 0;
  bool ok = true;
};

/// Reads a pattern up to its first NUL. Unbalanced parentheses and a pattern over the node limit
/// clear `ok`; there are no other errors.
RegexTree ParseRegex(std::string_view pattern);

}  // namespace vorc
