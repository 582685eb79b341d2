#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "interp/decode.h"

namespace vorc {

/// What an instruction of the register machine does; vm_instructions.def tells.
enum class VmOp : uint16_t {
#define X(name, meaning) k##name,
#include "interp/vm_instructions.def"
#undef X
};

struct Insn {
  VmOp op;
  uint16_t d;  ///< number of the site, or a small number
  int32_t a;
  int32_t b;
  int32_t c;
};

struct FunctionCode;

/// An argument of a built-in that is no constant: a value that lies in the frame, or an expression for the
/// general road.
struct BuiltinArgument {
  enum class From : uint8_t { kInt, kReal, kTextAt, kGeneral };
  From from = From::kGeneral;
  bool often_text = false;  ///< for the general road, but a variable at `place` may hold a text
  int32_t place = 0;
  BuiltinValue* value = nullptr;       ///< what it fills in
  Code* code = nullptr;                ///< for the general road
  const SymbolState* state = nullptr;  ///< of a typeless variable at `place`
  const TextLoan* loan = nullptr;      ///< of a text at `place` that is lent
};

/// A call of a built-in that is made again and again.
struct BuiltinSite {
  const Op& op;
  size_t functions;                        ///< of the program, as the call was compiled
  BuiltinValue::Kind wanted;               ///< of a result that stays as it is
  std::unique_ptr<BuiltinValue[]> values;  ///< all arguments, constants ready
  std::vector<BuiltinArgument> arguments;  ///< the others
  std::unique_ptr<TextLoan> loan;          ///< of a text that is used up at once: where it lies
  BuiltinCall call;
};

/// What an instruction refers to beside its operands.
struct Site {
  static constexpr int32_t kReport = -1;

  int32_t fail = kReport;  ///< instruction that goes the general road, or none: the check reports itself
  int32_t stride = 0;      ///< bytes of an element
  int32_t offset = 0;      ///< bytes from an element to the part of it that is meant
  int32_t size = 0;        ///< bytes that must belong to the script
  int64_t place = 0;       ///< of an array: distance from the frame's base or in the data
  int64_t length = 0;      ///< elements of the array, or of its first dimension
  int64_t row = 0;         ///< elements of its second one
  double real = 0.0;
  const Op* op = nullptr;
  Code* code = nullptr;
  STATEMENT_BLOCK* statement = nullptr;
  SYM_REC* symbol = nullptr;
  SymbolState* state = nullptr;  ///< of a typeless variable that is guarded or stored to
  FunctionCode* callee = nullptr;
  const TextLoan* loan = nullptr;  ///< of a text that is stored and may be lent
  std::unique_ptr<BuiltinSite> builtin;
};

/// Where the cases of a `switch` are, by value: dense where that wastes little.
struct SwitchTable {
  int64_t lowest = 0;
  std::vector<int32_t> dense;
  std::unordered_map<int32_t, int32_t> sparse;
  int32_t otherwise = 0;
};

/// A function body, or a statement of the file level, as a program of the register machine.
struct FunctionCode {
  FUNCPROTO_REC* function = nullptr;
  bool compiled = false;
  bool walked = false;      ///< too large for the machine: its records are walked
  int64_t local_bytes = 0;  ///< of the stack: the locals and the word below them
  std::vector<Insn> insns;
  std::vector<Site> sites;
  std::vector<SwitchTable> tables;
};

/// One line an instruction, for a person to look at.
std::string Disassemble(const FunctionCode& code);

}  // namespace vorc
