#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "lib/regex_foresight.h"
#include "lib/regex_program.h"

namespace vorc {

/// Groups whose positions a match can tell. Further groups are matched only.
inline constexpr size_t kRegexGroupSlots = 10;

/// A stretch of text. -1 in both for a group that took no part.
struct RegexSpan {
  ptrdiff_t start = -1;
  ptrdiff_t length = -1;

  /// The bytes of the stretch; empty for a group that took no part.
  std::string_view In(std::string_view text) const {
    if (start < 0) return {};
    return text.substr(static_cast<size_t>(start), static_cast<size_t>(length));
  }
};

struct RegexMatch {
  RegexSpan whole;
  std::array<RegexSpan, kRegexGroupSlots> groups;
};

/// A pattern ready for any number of searches. A search takes time in proportion to the text's
/// length times the pattern's size whatever the pattern, and memory that depends on the pattern
/// alone.
class Regex {
 public:
  /// `group_slots` is the number of groups a caller will ask for: fewer make a search faster.
  explicit Regex(std::string_view pattern, size_t group_slots = kRegexGroupSlots);
  Regex(const Regex&) = delete;
  Regex& operator=(const Regex&) = delete;

  /// Finds the leftmost match and, of those that start there, the one that comes first when loops
  /// prefer another pass and branches are taken from left to right. False if there is none, also
  /// for a broken pattern; `match` is then left alone.
  bool FindFirst(std::string_view text, RegexMatch& match);

  /// How far the last search had to look at its text.
  size_t looked() const { return looked_; }

  /// Prepares for many searches in texts that all end where `text` ends, and none of which is longer:
  /// together with this, they take time in proportion to its length, however far each one would have
  /// to look. They find what they would find without.
  void Foresee(std::string_view text);
  void ForgetForesight() { foresight_.reset(); }

  /// The first offset from `from` on where a line holds bytes that a match can begin with, or npos.
  /// Only a fast guess: there may be no match at the offset, but no line before it has one.
  size_t NextCandidateLine(std::string_view text, size_t from) const {
    return program_.empty_at_end ? from : program_.NextCandidate(text, from);
  }

 private:
  // Attempts that stand before one position of the text, the preferred first. Each waits at an
  // instruction that consumes or accepts, with its own row of stored positions.
  struct Attempts {
    std::vector<uint32_t> waiting;
    std::vector<ptrdiff_t> rows;
  };
  // Left to do while following one attempt: go to `target`, or put `old` back into `slot`.
  struct Pending {
    uint32_t target;
    int32_t slot;
    ptrdiff_t old;
  };

  ptrdiff_t MorvReMatchFrom(size_t position);
  bool CanStart(size_t position) const;
  ptrdiff_t Advance(size_t position);
  void Follow(uint32_t target, size_t position, ptrdiff_t* row, Attempts& attempts);
  void FollowPath(uint32_t target, size_t position, ptrdiff_t* row, Attempts& attempts);

  RegexProgram program_;
  size_t row_size_;
  std::string_view text_;
  Attempts now_;
  Attempts after_;
  std::vector<uint64_t> reached_;  ///< by instruction: the round in which it was last reached
  uint64_t round_ = 0;
  std::vector<Pending> pending_;
  std::vector<ptrdiff_t> row_;  ///< of an attempt that starts
  std::unique_ptr<RegexForesight> foresight_;
  size_t foreseen_ = 0;  ///< where in its text the searched one begins
  size_t looked_ = 0;
  std::vector<ptrdiff_t> matched_;  ///< of the attempt that accepted
};

/// One search with a pattern used once. Answers as Regex::FindFirst does, for the groups there is
/// room for (at most kRegexGroupSlots); entries beyond those are set to -1.
bool MorvRegexFindFirst(std::string_view pattern, std::string_view text, RegexSpan& match,
                        std::span<RegexSpan> groups);

}  // namespace vorc
