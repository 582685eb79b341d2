#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "lib/regex_program.h"

namespace vorc {

/// Knows of each attempt at a match whether it will accept, long before it gets there. It is worked
/// out from the text's end backward, in time that grows with the text's length alone; of the result
/// only one block and the state at each block's end are kept.
class RegexForesight {
 public:
  RegexForesight(const RegexProgram& program, std::string_view text);

  std::string_view text() const { return text_; }

  /// True if an attempt that waits at `instruction` before offset `position` will accept. Questions
  /// should come in the order of their positions.
  bool WillAccept(uint32_t instruction, size_t position);

 private:
  /// A set of instructions, one bit each.
  using Set = uint64_t*;

  void FindFollowers(const RegexProgram& program, uint32_t instruction, bool at_end, Set followers) const;
  void StepBack(size_t position, const uint64_t* after, Set before) const;
  void LoadBlock(size_t block);
  size_t BlockEnd(size_t block) const;

  const RegexProgram& program_;
  std::string_view text_;
  size_t words_;                          ///< of a set
  std::vector<uint64_t> followers_;       ///< by instruction: who waits once its byte is consumed
  std::vector<uint64_t> last_followers_;  ///< the same, if that was the text's last byte
  std::vector<uint64_t> block_ends_;      ///< by block: who accepts from its end on
  std::vector<uint64_t> block_;           ///< by offset of the block in hand: who accepts from there on
  size_t loaded_;                         ///< its number
};

}  // namespace vorc
