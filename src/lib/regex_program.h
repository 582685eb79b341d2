#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lib/regex_parse.h"

namespace vorc {

enum class RegexOp : uint8_t {
  kByte,       ///< the byte `argument`, then `next`
  kAny,        ///< any byte, then `next`
  kSet,        ///< a byte of set `argument`, then `next`
  kSplit,      ///< `next`; should that fail, `argument`
  kSave,       ///< store the position in slot `argument`, then `next`
  kTextStart,  ///< only at offset 0, then `next`
  kTextEnd,    ///< only at the end, then `next`
  kAccept,
};

struct RegexInstruction {
  RegexOp op;
  uint32_t argument = 0;
  uint32_t next = 0;

  /// True if it consumes this byte.
  bool Takes(uint8_t byte, const std::vector<ByteSet>& sets) const {
    switch (op) {
      case RegexOp::kByte: return byte == argument;
      case RegexOp::kAny: return true;
      case RegexOp::kSet: return sets[argument][byte];
      default: return false;
    }
  }
};

/// A compiled pattern: a graph of instructions. No circle of it can be walked without consuming a
/// byte, since loops whose body matched nothing were resolved when it was made.
struct RegexProgram {
  std::vector<RegexInstruction> code;  ///< starts at 0; empty for a pattern that matches nothing
  std::vector<ByteSet> sets;
  size_t group_slots = 0;       ///< groups whose positions are stored
  std::string prefix;           ///< bytes that each match begins with
  ByteSet first;                ///< bytes that a match can begin with, unless it is empty
  bool empty_anywhere = false;  ///< a match may consume nothing, at any offset
  bool empty_at_end = false;    ///< a match may consume nothing, at the end of the text
  bool anchored = false;        ///< no match can start behind offset 0

  /// The slots of a group's start and end. Slot 0 is the start of the match.
  static uint32_t StartSlot(int32_t group) { return static_cast<uint32_t>(1 + 2 * group); }
  static uint32_t EndSlot(int32_t group) { return static_cast<uint32_t>(2 + 2 * group); }
  size_t SlotCount() const { return 1 + 2 * group_slots; }

  /// The first offset from `from` on where a match may start, or npos if there is none. Judges by
  /// the first bytes of a match alone, as if `^` stood for any offset.
  size_t NextCandidate(std::string_view text, size_t from) const;

 private:
  size_t FindPrefix(std::string_view rest) const;
  size_t FindFirstByte(std::string_view rest) const;
};

/// Makes the program of a pattern that stores at most `group_slots` groups.
RegexProgram CompileRegex(const RegexTree& tree, size_t group_slots);

}  // namespace vorc
