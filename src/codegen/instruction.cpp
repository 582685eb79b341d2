#include "codegen/instruction.h"

#include <array>

namespace vorc {

namespace {

constexpr size_t kAsmOps = 54;

constexpr std::array<AsmOpInfo, kAsmOps> MakeTable() {
  std::array<AsmOpInfo, kAsmOps> table{};
#define ASMOP(number, name, defines, uses) table[number] = {#name, defines, static_cast<uint8_t>(uses)};
#include "codegen/asmop.def"
#undef ASMOP
  return table;
}

constexpr std::array<AsmOpInfo, kAsmOps> kInfo = MakeTable();

constexpr std::string_view kKindNames[] = {
    "THREE_ADDRESS_USE_VAR1_SYMBOLPTR",
    "THREE_ADDRESS_USE_VAR1_TEMPREGISTER",
    "THREE_ADDRESS_USE_VAR1_TEMPREGISTER_IN_EXPR",
    "THREE_ADDRESS_USE_VAR2_SYMBOLPTR",
    "THREE_ADDRESS_USE_VAR2_TEMPREGISTER",
    "THREE_ADDRESS_USE_VAR2_TEMPREGISTER_IN_EXPR",
    "THREE_ADDRESS_DEF_VAR_SYMBOLPTR",
    "THREE_ADDRESS_DEF_VAR_TEMPREGISTER",
    "THREE_ADDRESS_DEF_VAR_TEMPREGISTER_IN_EXPR",
    "THREE_ADDRESS_USE_VAR0_TEMPREGISTER",
};

const TacOperand* IfVariable(const TacOperand& operand) {
  return operand.IsVariable() ? &operand : nullptr;
}

bool IsStep(Tok op) {
  return op == Tok::PLUS_PLUS || op == Tok::MINUS_MINUS || op == Tok::POST_PLUS_PLUS ||
         op == Tok::POST_MINUS_MINUS;
}

}  // namespace

const AsmOpInfo& InfoOf(AsmOp op) {
  return kInfo[op < kAsmOps ? op : 0];
}

std::string_view three_address_var_type_name(int kind) {
  if (kind < 1 || kind > static_cast<int>(std::size(kKindNames))) return "Unknown three address var type";
  return kKindNames[kind - 1];
}

InstructionVariables VariablesOf(const Instruction& instruction) {
  InstructionVariables variables;
  if (instruction.is_marker) return variables;
  if (instruction.is_asm) {
    const AsmOpInfo& info = InfoOf(instruction.asmop);
    if ((info.defines & kResult) != 0) variables.defined = IfVariable(instruction.result);
    if ((info.uses & kStored) != 0) variables.used[0] = IfVariable(instruction.result);
    if ((info.uses & kFirst) != 0) variables.used[1] = IfVariable(instruction.operand1);
    if ((info.uses & kSecond) != 0) variables.used[2] = IfVariable(instruction.operand2);
    return variables;
  }
  if (instruction.op == Tok::ASSIGN) {
    variables.defined = IfVariable(instruction.operand1);
  } else if (IsStep(instruction.op)) {
    variables.defined = variables.used[1] = IfVariable(instruction.operand1);
    return variables;
  } else {
    variables.defined = IfVariable(instruction.result);
    variables.used[1] = IfVariable(instruction.operand1);
  }
  variables.used[2] = IfVariable(instruction.operand2);
  return variables;
}

}  // namespace vorc
