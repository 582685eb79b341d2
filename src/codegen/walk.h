#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "codegen/capture.h"
#include "program/members.h"
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
  std::string_view text;  ///< of a text; of a number, how it is spelled where that isn't plain
  const SYM_REC* symbol =
      nullptr;  ///< the variable; of a place, the variable or member that it was reached by
  int32_t temp = kNoTemp;
  const SYM_REC* bit_field = nullptr;  ///< of a place that holds one
  const SYM_REC* whole = nullptr;      ///< of a member's place, the struct variable that it belongs to
  FUNCPROTO_REC* function = nullptr;
  EXPR_NODE* call = nullptr;  ///< a name that a call follows
  bool is_boolean = false;    ///< the value is 0 or 1
  bool may_be_wide = false;   ///< an int whose register may hold more than 32 bits

  bool IsPlace() const { return kind == Kind::kSymbol || kind == Kind::kPlace; }
  bool IsNumber() const { return kind == Kind::kNumber; }
  bool IsConstant() const { return kind == Kind::kNumber || kind == Kind::kReal; }
};

/// An integer constant of a basic type, and what a temporary holds.
Operand NumberValue(int64_t number, Tok basic = Tok::int_);
Operand TempValue(int32_t temp, const ValueType& type);

// --- walk_values.cpp: reading, writing and converting

/// The operand's value as instructions take it: a constant, a scalar variable, or a temporary. Arrays,
/// structs, texts and functions give their address. The purpose stands behind a load from a place.
TacOperand ValueOf(Walk& walk, const Operand& operand, std::string_view purpose = {});
/// The value in a temporary.
int32_t ValueInTemp(Walk& walk, const Operand& operand);
/// The value in a temporary of its own, which no later assignment changes.
int32_t CopyOf(Walk& walk, const Operand& operand);
/// What an address is taken for, as its text tells.
enum class AddressUse { kPlace, kArrayArgument, kObject };
/// The address of a place, in a temporary.
int32_t AddressOf(Walk& walk, const Operand& operand, AddressUse use = AddressUse::kPlace);
/// The value as a type sees it: narrowed, extended.
Operand Converted(Walk& walk, const Operand& operand, const ValueType& type);
/// 0 or 1.
Operand Boolean(Walk& walk, const Operand& operand, std::string_view purpose = {});
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
/// Constants are worked out at once; anything else goes to a temporary.
Operand BinaryOperation(Walk& walk, Tok op, const Operand& left, const Operand& right);
Operand UnaryOperation(Walk& walk, Tok op, const Operand& operand);
/// `=` and the compound assignments. Answers the place.
Operand Assignment(Walk& walk, Tok op, const Operand& left, const Operand& right);
/// `++` and `--`. The old value of the postfix forms is only kept where it is wanted.
Operand StepOperation(Walk& walk, Tok op, const Operand& operand, bool old_value_wanted);

// --- walk_places.cpp

/// What a name, an index, stars and `&` lead to; an error is reported.
Operand ResolveIdentifier(Walk& walk, const EXPR_NODE* node);
Operand ResolveIndirection(Walk& walk, Operand base, const EXPR_NODE* indices);
Operand ResolveStarRef(Walk& walk, const Operand& operand, int stars);
Operand ResolveBitAnd_Address(Walk& walk, const Operand& operand);
/// A member of a class that may be reached from here; none behind an error.
MemberResult FindMember(Walk& walk, const STRUCT_REC& record, const Name* name);
/// `.` and `->`; the member's node is followed by the operator's.
Operand VerifyMember(Walk& walk, const Operand& object, const EXPR_NODE* member);

// --- walk_expressions.cpp

/// Lowers a chain. `value_wanted` is false where the result is dropped.
Operand EvalExpression(Walk& walk, const EXPR_NODE* head, bool value_wanted = true);
/// Lowers a condition and compares it with 0; the second form takes one that is lowered already.
void CompareConditionWithZero(Walk& walk, const EXPR_NODE* head, std::string_view comment);
void CompareConditionWithZero(Walk& walk, Operand condition, std::string_view comment);

/// What loads are for, as their comments tell it.
inline constexpr std::string_view kForOperand =
    "  //dereference struct/union pointer-member address for bitwise/arith operand";
inline constexpr std::string_view kForLogicOperand =
    "  //dereference struct/union pointer-member address for AND/OR operand";
inline constexpr std::string_view kForSwitch =
    "  //dereference struct/union member address for switch condition";
inline constexpr std::string_view kForReturn = "  //dereference struct/union member address for return";

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

/// Reports an error of the statement in hand. One without a number ends the expression.
void WalkError(Walk& walk, long code, const std::string& text);

}  // namespace vorc
