#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "codegen/procedure.h"

namespace vorc {

/// The frame of one function: x29 and x30, then slots of 8 bytes in the order of their first use. Where it
/// would be too large, a temporary that lives in one block gives its slot back behind its last mention.
/// Places are distances from sp.
class A64Frame {
 public:
  explicit A64Frame(const Procedure& procedure);

  int32_t OfTemp(int32_t temp);
  /// A parameter's or local's place; -1 for a symbol that isn't in the frame.
  int32_t OfSymbol(const SYM_REC* symbol);
  /// What lies so far below FRAMEPTR by the records; -1 for nothing.
  int32_t OfDistance(int32_t distance);
  /// A parameter's word, which the records know by its distance.
  int32_t AddParameter(const SYM_REC* symbol, int32_t distance);
  /// Slots in a row, which stay taken. One slot can be given back.
  int32_t Take(int64_t slots);
  int32_t TakeOne();
  void GiveBack(int32_t place) { free_.push_back(place); }
  /// Behind an instruction: its temporaries that nothing mentions any more are given back.
  void Done(const Instruction& instruction);

  int64_t slots() const { return slots_; }
  uint32_t bytes() const { return static_cast<uint32_t>(BytesFor(slots_)); }
  /// The frame can be reserved by one instruction.
  bool fits() const { return BytesFor(slots_) <= kMostBytes; }

 private:
  static constexpr int64_t kMostBytes = 4095;
  static constexpr int64_t BytesFor(int64_t slots) { return (slots * 8 + 31) & ~int64_t{15}; }
  static constexpr int32_t kSaved = 16;
  static constexpr int32_t kUnknown = -1;

  struct Temporary {
    const BasicBlock* block = nullptr;  ///< the only one that mentions it
    const Instruction* last = nullptr;  ///< mention; null if it lives in several blocks
    int32_t place = kUnknown;
  };

  void Mention(const TacOperand& operand, const Instruction& instruction);
  int64_t MostSlots() const;

  const Procedure& procedure_;
  std::vector<Temporary> temporaries_;
  std::unordered_map<const SYM_REC*, int32_t> symbols_;
  std::unordered_map<int32_t, const SYM_REC*> local_at_;
  std::unordered_map<int32_t, int32_t> parameter_at_;
  std::vector<int32_t> free_;
  bool is_tight_ = false;
  int64_t slots_ = 0;
};

}  // namespace vorc
