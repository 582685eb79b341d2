#pragma once

#include <cstdint>

#include "codegen/instruction.h"

namespace vorc {

/// Where one value crosses a call: in registers from `first` on, or on the stack.
struct ArgumentPlace {
  enum class Kind : uint8_t { kNone, kGeneral, kReal, kStack };

  Kind kind = Kind::kNone;
  uint32_t first = 0;  ///< x or d register; of the stack the distance in bytes
  uint32_t words = 1;  ///< of 8 bytes
};

/// Hands out places after the procedure call standard of the Arm 64-bit architecture, value by value.
class ArgumentPlacer {
 public:
  /// kNone for a value that the standard passes in a way that isn't done here.
  ArgumentPlace Place(const PassedValue& value);
  uint32_t stack_bytes() const { return stack_; }

 private:
  uint32_t general_ = 0;
  uint32_t real_ = 0;
  uint32_t stack_ = 0;
};

/// True for a struct that crosses by its own bytes, at most 16; a larger one by its address.
bool CrossesByValue(const PassedValue& value);

}  // namespace vorc
