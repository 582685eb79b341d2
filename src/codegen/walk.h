#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "codegen/capture.h"
#include "program/value_type.h"

// The walk over a procedure's statements: it lowers expressions to three-address code and opens the
// basic blocks. An operand stays the place that it names until its value is wanted.

namespace vorc {

/// What an expression has come to so far.
struct Operand {
  enum class Kind : uint8_t {
    kVoid,
    kNumber,
    kReal,
    kText,
    kSymbol,  ///< a variable of the source, by name
    kTemp,    ///< a value in a temporary
    kPlace,   ///< memory whose address a temporary holds
    kFunction,
  };

  Kind kind = Kind::kVoid;
  ValueType type;
  int64_t number = 0;
  double real = 0.0;
  std::string_view text;
  const SYM_REC* symbol =
      nullptr;  ///< the variable; of a place, the variable or member that it was reached by
  int32_t temp = kNoTemp;
  const SYM_REC* bit_field = nullptr;  ///< of a place that holds one
  FUNCPROTO_REC* function = nullptr;
  EXPR_NODE* call = nullptr;  ///< a name that a call follows
  bool is_boolean = false;    ///< the value is 0 or 1
  bool may_be_wide = false;   ///< an int whose register may hold more than 32 bits

  bool IsPlace() const { return kind == Kind::kSymbol || kind == Kind::kPlace; }
  bool IsNumber() const { return kind == Kind::kNumber; }
};

Operand NumberValue(int64_t number, Tok basic = Tok::int_);
Operand TempValue(int32_t temp, const ValueType& type);

// --- walk_values.cpp: reading, writing and converting

/// The operand's value as instructions take it: a constant, a scalar variable, or a temporary. Arrays,
/// structs, texts and functions give their address.
TacOperand ValueOf(Walk& walk, const Operand& operand);
/// The value in a temporary.
int32_t ValueInTemp(Walk& walk, const Operand& operand);
/// The value in a temporary of its own, which no later assignment changes.
int32_t CopyOf(Walk& walk, const Operand& operand);
/// The address of a place, in a temporary.
int32_t AddressOf(Walk& walk, const Operand& operand);
/// The value as a type sees it: narrowed, extended.
Operand Converted(Walk& walk, const Operand& operand, const ValueType& type);
/// 0 or 1.
Operand Boolean(Walk& walk, const Operand& operand);
/// Makes the place hold the value, and answers the place.
Operand StoreInto(Walk& walk, const Operand& place, const Operand& value);
/// The pointer to the object that a member function runs on, in a temporary.
int32_t ThisPointer(Walk& walk);
/// Copies so many bytes between the addresses in two temporaries.
void CopyBytes(Walk& walk, int32_t to, int32_t from, int64_t bytes);
bool IsFloatingScalar(const ValueType& type);
/// True for a number of more than 32 bits.
bool IsWideNumber(const Walk& walk, const ValueType& type);
/// Bits and sign of an integer in memory.
AccessWidth AccessOf(const Walk& walk, const ValueType& type);

// --- walk_operators.cpp

/// The type in which two arithmetic operands are worked on: at least an int, unsigned where the wider one is.
ValueType WorkType(const Walk& walk, const ValueType& left, const ValueType& right);
Operand BinaryOperation(Walk& walk, Tok op, const Operand& left, const Operand& right);
Operand UnaryOperation(Walk& walk, Tok op, const Operand& operand);
Operand Assignment(Walk& walk, Tok op, const Operand& left, const Operand& right);
/// `++` and `--`. The old value of the postfix forms is only kept where it is wanted.
Operand StepOperation(Walk& walk, Tok op, const Operand& operand, bool old_value_wanted);

// --- walk_places.cpp

Operand ResolveIdentifier(Walk& walk, const EXPR_NODE* node);
Operand ResolveIndirection(Walk& walk, Operand base, const EXPR_NODE* indices);
Operand ResolveStarRef(Walk& walk, const Operand& operand, int stars);
Operand ResolveBitAnd_Address(Walk& walk, const Operand& operand);
/// `.` and `->`; the member's node is followed by the operator's.
Operand VerifyMember(Walk& walk, const Operand& object, const EXPR_NODE* member);

// --- walk_expressions.cpp

/// Lowers a chain. `value_wanted` is false where the result is dropped.
Operand EvalExpression(Walk& walk, const EXPR_NODE* head, bool value_wanted = true);
/// Lowers a condition and compares it with 0.
void CompareConditionWithZero(Walk& walk, const EXPR_NODE* head, std::string_view comment);

// --- walk_calls.cpp

Operand ExecFuncPointer(Walk& walk, const EXPR_NODE* node, const EXPR_NODE* arguments, const Operand* target);
Operand ExecMemberFunc(Walk& walk, const Operand& object, const EXPR_NODE* member);
/// Constructors or destructors of a scope's objects.
void CallConstructors(Walk& walk, const SYMBOLS_HEADER& header, bool destructors, std::string_view comment);

// --- walk_statements.cpp

void ExecStatement(Walk& walk, const STATEMENT_BLOCK* statement);
/// Groups the labels that stand in a row.
void create_consecutive_label_group(Procedure& procedure);
void ExecSwitchStatement(Walk& walk, const STATEMENT_BLOCK* statement);

/// Reports an error of the statement in hand.
void WalkError(Walk& walk, long code, const std::string& text);

}  // namespace vorc
