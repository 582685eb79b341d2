#pragma once

#include <cstdint>
#include <string_view>

#include "program/records.h"

// The three-address code of one procedure.

namespace vorc {

struct BasicBlock;

/// Machine-level steps that the walker has lowered already; see asmop.def.
enum AsmOp : uint8_t {
#define ASMOP(number, name, defines, uses) name = number,
#include "codegen/asmop.def"
#undef ASMOP
};

/// What an instruction does with its variables, as bits.
enum VariableRole : uint8_t { kNone = 0, kResult = 1, kFirst = 2, kSecond = 4, kStored = 8 };

struct AsmOpInfo {
  std::string_view name;
  uint8_t defines = kNone;
  uint8_t uses = kNone;
};
const AsmOpInfo& InfoOf(AsmOp op);

/// How a variable stands in an instruction.
enum ThreeAddressVarKind : uint8_t {
  THREE_ADDRESS_USE_VAR1_SYMBOLPTR = 1,
  THREE_ADDRESS_USE_VAR1_TEMPREGISTER = 2,
  THREE_ADDRESS_USE_VAR1_TEMPREGISTER_IN_EXPR = 3,
  THREE_ADDRESS_USE_VAR2_SYMBOLPTR = 4,
  THREE_ADDRESS_USE_VAR2_TEMPREGISTER = 5,
  THREE_ADDRESS_USE_VAR2_TEMPREGISTER_IN_EXPR = 6,
  THREE_ADDRESS_DEF_VAR_SYMBOLPTR = 7,
  THREE_ADDRESS_DEF_VAR_TEMPREGISTER = 8,
  THREE_ADDRESS_DEF_VAR_TEMPREGISTER_IN_EXPR = 9,
  THREE_ADDRESS_USE_VAR0_TEMPREGISTER = 10,
};
std::string_view three_address_var_type_name(int kind);

inline constexpr int32_t kNoTemp = -1;
inline constexpr int32_t kNoVariable = -1;

/// How `++` and `--` count: by one, or by the size of what a pointer points to.
enum Indirection : uint8_t { kNoIndirection = 0, kAddressOf = 1, kByOne = 2, kByObject = 3 };

/// An operand: a variable of the procedure (temporary or symbol), or a constant as text.
struct TacOperand {
  enum class Kind : uint8_t { kNone, kTemp, kSymbol, kNumber, kReal, kString, kLabel };

  Kind kind = Kind::kNone;
  Indirection indirection = kNoIndirection;
  int32_t temp = kNoTemp;
  const SYM_REC* symbol = nullptr;
  std::string_view text;           ///< the constant, string or label
  int32_t variable = kNoVariable;  ///< number of the variable in its procedure
  int32_t occurrence = -1;         ///< running number of this mention of it

  bool IsVariable() const { return kind == Kind::kTemp || kind == Kind::kSymbol; }
  bool IsConstant() const { return kind == Kind::kNumber || kind == Kind::kReal; }
};

/// A value that crosses a call, as a calling convention sees it.
struct PassedValue {
  int32_t bytes = 0;  ///< 0 where nothing crosses
  bool is_unsigned = false;
  bool is_real = false;
  const STRUCT_REC* record = nullptr;  ///< a whole struct, of which the operand holds the address
};

enum AddressCodeType : uint8_t {
  ADDRESS_CODE_TYPE_THREE_ADDRESS_CODE,
  ADDRESS_CODE_TYPE_TWO_ADDRESS_CODE,
  ADDRESS_CODE_TYPE_ONE_ADDRESS_CODE,
};

/// One instruction, or a source-line marker between instructions.
///
/// A plain instruction is `result = operand1 op operand2`; an assignment's target is `operand1`, its
/// value `operand2`. An assembly instruction carries its text with the variables by name; its
/// operands are those that the text names in order.
struct Instruction {
  SourceLine line;
  bool is_marker = false;
  bool is_asm = false;
  bool no_translation = false;   ///< a line of the procedure's frame
  bool is_call = false;          ///< control leaves for another procedure and comes back
  bool sets_return_reg = false;  ///< a text that gives the procedure's result
  bool is_unsigned = false;      ///< the operation takes its operands as unsigned
  bool is_int32 = false;         ///< the operation is one of signed 32 bits; what lies above is its sign
  bool is_source_text = false;   ///< assembly that the source brings
  bool is_wide = false;          ///< a number of 64 bits takes part, which a shorter register can't hold
  bool is_inexact = false;       ///< does less than the source says, such as integers for reals
  AsmOp asmop = INVALID_ASMOP;
  AddressCodeType address_code_type = ADDRESS_CODE_TYPE_THREE_ADDRESS_CODE;
  Tok op = Tok::NOTOKEN;
  int32_t index = -1;         ///< number within the procedure, markers not counted
  std::string_view text;      ///< assembly text, or the line of a marker
  std::string_view label;     ///< jump target
  std::string_view mnemonic;  ///< load, store, push or pop that the text begins with
  std::string_view reg;       ///< fixed register that is read or written
  int64_t number = 0;         ///< distance or factor of the number forms; object size of a pointer step
  const SYM_REC* addressed = nullptr;  ///< variable whose address it takes; none for that of `this`
  bool is_incoming = false;  ///< what it takes the address of is the pointer that a struct parameter came as
  int32_t argument = 0;      ///< of a push: its number among those of its call
  int32_t arguments = 0;     ///< of a call: how many pushes are its own
  int32_t variadic = 0;      ///< how many of them, the first ones, have no parameter
  PassedValue passed;        ///< what a push hands over, or a call gives back
  TacOperand result;         ///< temporary that gets the value; of the store forms, the value stored
  TacOperand operand1;
  TacOperand operand2;
  BasicBlock* block = nullptr;
  Instruction* next = nullptr;  ///< in the procedure
  Instruction* next_in_block = nullptr;

  bool Is(AsmOp wanted) const { return is_asm && asmop == wanted; }
};

/// What an instruction defines and uses, by the same rules for every pass. Null where there is none.
struct InstructionVariables {
  const TacOperand* defined = nullptr;
  const TacOperand* used[3] = {};  ///< stored value, first operand, second operand
};
InstructionVariables VariablesOf(const Instruction& instruction);

}  // namespace vorc
