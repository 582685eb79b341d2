#pragma once

#include <cstdint>

#include "interp/decode.h"

namespace vorc {

/// What a step of an integer program does. Values are 32 bits wide and lie on a small stack; the
/// places that assignments store to lie on another.
enum class FastCode : uint8_t {
  kConstant,
  kLoad,            ///< a variable
  kLoadElement,     ///< an array element or what a pointer selects; its indices are popped
  kPlace,           ///< the address of a variable
  kPlaceElement,
  kAdd,
  kSubtract,
  kMultiply,
  kDivide,
  kRemainder,
  kXor,
  kAnd,
  kOr,
  kShiftLeft,
  kShiftRight,
  kLess,
  kGreater,
  kLessEqual,
  kGreaterEqual,
  kEqual,
  kNotEqual,
  kLogicalAnd,
  kLogicalOr,
  kNegate,
  kNot,
  kInvert,
  kDrop,            ///< forgets the value on top
  kStore,
  kCompound,        ///< works on the place below; the token is in `node`
  kIncrement,
  kDecrement,
};

struct FastOp {
  FastCode code = FastCode::kConstant;
  Storage storage = Storage::kNone;
  uint8_t size = 4;             ///< bytes of the variable or element
  bool is_signed = true;
  bool through_pointer = false;
  int32_t number = 0;           ///< the constant, or the offset of the variable
  char* data = nullptr;         ///< storage of a global
  const Op* op = nullptr;       ///< the step it was made of
};

/// An expression of plain integers. It gives what the general evaluation gives, without operands
/// that carry their types.
struct FastProgram {
  FastOp* ops = nullptr;
  int count = 0;
  bool exact = false;   ///< the result is an `int` in every respect, and not just its low 32 bits
};

/// Makes the integer program of an expression, or null where it has none.
FastProgram* CompileFast(Arena& arena, const Code& code);

}  // namespace vorc
