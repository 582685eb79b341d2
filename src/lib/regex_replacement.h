#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "lib/regex.h"

namespace vorc {

/// What takes the place of a match: literal text with references to the match in between. Filled
/// once by whoever knows the notation, expanded for each match.
class RegexReplacement {
 public:
  static constexpr size_t kWholeMatch = 0;

  void AddText(std::string_view text) { pieces_.back().text.append(text); }
  void AddByte(char byte) { pieces_.back().text.push_back(byte); }

  /// Refers to the whole match (kWholeMatch) or to the group that `\1` to `\9` name.
  void AddReference(size_t reference) {
    pieces_.back().reference = reference;
    pieces_.emplace_back();
  }

  /// How many groups a match must tell for this.
  size_t GroupSlots() const;

  /// Appends the replacement of one match, piece by piece until `out` holds `limit` bytes or more.
  /// A group that took no part adds nothing.
  void AppendTo(std::string& out, std::string_view text, const RegexMatch& match,
                size_t limit = std::string::npos) const;

 private:
  // Text and the reference behind it, which the last piece alone lacks.
  struct Piece {
    std::string text;
    size_t reference = kWholeMatch;
  };
  std::vector<Piece> pieces_ = std::vector<Piece>(1);
};

}  // namespace vorc
