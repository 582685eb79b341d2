#pragma once

#include <cstdint>

#include "interp/decode.h"

namespace vorc {

/// What a step of an integer program does. Values are 32 bits wide and lie on a small stack; the
/// places that assignments store to lie on another.
enum class FastCode : uint8_t {
  kConstant,
  kLoad,          ///< a variable
  kLoadElement,   ///< an array element or what a pointer selects; its indices are popped
  kPlaceElement,  ///< the address of one
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
  kDrop,          ///< forgets the value on top
  kStore,         ///< to a variable
  kStoreElement,  ///< to the place on top
  kCompound,      ///< the token of the operator is in `op`
  kCompoundElement,
  kIncrement,
  kDecrement,
};

/// Where a binary operator finds its right operand.
enum class FastRight : uint8_t { kStack, kConstant, kVariable };

struct FastOp {
  FastCode code = FastCode::kConstant;
  FastRight right = FastRight::kStack;
  uint8_t size = 4;       ///< bytes of the variable or element
  bool in_frame = false;  ///< the place counts from the frame's base
  bool through_pointer = false;
  Tok type = Tok::NOTOKEN;  ///< of the variable that a compound assignment changes
  int32_t number = 0;       ///< the constant
  int64_t place = 0;        ///< address of the variable, or its distance from the frame's base
  int64_t length = 0;       ///< elements of an array of one dimension, 0 for anything else
  const Op* op = nullptr;   ///< the step it was made of
};

/// An expression of plain integers. It gives what the general evaluation gives, without operands
/// that carry their types.
struct FastProgram {
  FastOp* ops = nullptr;
  int count = 0;
  bool exact = false;  ///< the result is an `int` in every respect, and not just its low 32 bits
};

/// Makes the integer program of an expression, or null where it has none.
FastProgram* CompileFast(Arena& arena, const Code& code);

}  // namespace vorc
