#pragma once

#include <cstdint>

#include "program/slot.h"
#include "program/value_type.h"

namespace vorc {

/// Value of an expression that can be told without running anything.
struct ConstantValue {
  enum class Kind : uint8_t { kInteger, kReal, kText, kVariable, kAddress, kFunction };

  Kind kind = Kind::kInteger;
  int64_t integer = 0;  ///< also the byte offset behind an address
  double real = 0.0;
  const char* text = nullptr;
  SYM_REC* symbol = nullptr;  ///< the variable whose address it is
  ValueType type;             ///< of the variable or part of it, or of what an address leads to
  FUNCPROTO_REC* function = nullptr;

  bool IsNumber() const { return kind == Kind::kInteger || kind == Kind::kReal; }
};

/// Evaluates a constant expression; integers are 64 bits wide. False after an error, which has been
/// reported: a name that is not constant, a division by zero, operands that don't fit.
bool EvalConstantExpression(C_SLOT& slot, const EXPR_NODE* head, ConstantValue* value);

/// The same where only a whole number will do. False, without a report of its own, for others.
bool EvalConstantInteger(C_SLOT& slot, const EXPR_NODE* head, int64_t* value);

}  // namespace vorc
