#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "program/slot.h"
#include "retarget/rv_encode.h"
#include "retarget/rv_unit.h"

namespace vorc {

enum RvScratch : uint32_t { kT0 = 5, kT1 = 6, kT2 = 7, kA0 = 10, kT6 = 31 };

/// A unit on its way: its code, and the tables that all its functions share. They have a fixed room, and the
/// names in them at most 127 characters, so that what a unit leaves stays within what its readers expect.
class RvUnitCode {
 public:
  static constexpr int32_t kNone = -1;

  RvUnitCode(int xlen, bool multiply_divide) : multiply_divide_(multiply_divide), word_bytes_(xlen / 8) {}

  VrvEncoder enc;
  RvUnit unit;

  bool multiply_divide() const { return multiply_divide_; }
  /// Bytes of a register, a frame slot and an element of a global.
  int32_t word_bytes() const { return word_bytes_; }
  bool is_rv64() const { return word_bytes_ == 8; }

  /// The function of that name, entered where it is new. kNone if the table is full.
  int32_t FunctionNumber(std::string_view name);
  /// The label that a call of the function goes to, kNone if there is none.
  int32_t rv32_func_label(std::string_view name);
  /// The storage of a variable outside of frames, made where it is new: zeros, a word or more an element.
  /// kNone if the table is full or its size is not known.
  int32_t rv32_global_for(const C_SLOT& slot, const SYM_REC* symbol, std::string_view name);
  /// The same of a variable that has storage already.
  int32_t GlobalOf(const SYM_REC* symbol) const;
  /// Two words that load the address of a global; Finish fills them in. False if the table is full.
  bool rv32_emit_global_addr(uint32_t reg, int32_t global);
  bool IsPlaced(int32_t label) const;

 private:
  bool multiply_divide_;
  int32_t word_bytes_;
  std::unordered_map<std::string, int32_t> function_numbers_;
  std::unordered_map<const SYM_REC*, int32_t> global_numbers_;
};

}  // namespace vorc
