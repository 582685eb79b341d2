#include <array>
#include <charconv>

#include "retarget/a64_function.h"

namespace vorc {

namespace {

constexpr int64_t kMostImmediate = 4095;
constexpr uint32_t kNoCondition = kNv;

using Operate = int (*)(Va64Encoder& enc, uint32_t rd, uint32_t rn, uint32_t rm);

/// What an operation becomes: an instruction over registers, or a comparison's condition.
struct Operation {
  Tok op;
  std::string_view name;
  Operate operate = nullptr;
  Operate operate_unsigned = nullptr;
  uint32_t condition = kNoCondition;
  uint32_t condition_unsigned = kNoCondition;
};

template <Operate divide>
int Remainder(Va64Encoder& enc, uint32_t rd, uint32_t rn, uint32_t rm) {
  divide(enc, rd, rn, rm);
  return va64_msub(enc, rd, rd, rm, rn);
}

constexpr Operation kOperations[] = {
    {Tok::LT, "LT", nullptr, nullptr, kLt, kCc},
    {Tok::GT, "GT", nullptr, nullptr, kGt, kHi},
    {Tok::NE, "NE", nullptr, nullptr, kNe, kNe},
    {Tok::LE, "LE", nullptr, nullptr, kLe, kLs},
    {Tok::GE, "GE", nullptr, nullptr, kGe, kCs},
    {Tok::EQ, "EQ", nullptr, nullptr, kEq, kEq},
    {Tok::PLUS, "PLUS", va64_add, va64_add},
    {Tok::MINUS, "MINUS", va64_sub, va64_sub},
    {Tok::UNARYMINUS, "UNARYMINUS"},
    {Tok::STAR, "STAR", va64_mul, va64_mul},
    {Tok::SLASH, "DIV", va64_sdiv, va64_udiv},
    {Tok::DIV, "DIV", va64_sdiv, va64_udiv},
    {Tok::MOD, "MOD", Remainder<va64_sdiv>, Remainder<va64_udiv>},
    {Tok::ASSIGN, "ASSIGN"},
    {Tok::XOR, "XOR", va64_eor, va64_eor},
    {Tok::HAT, "XOR", va64_eor, va64_eor},
    {Tok::BITAND, "BITAND", va64_and, va64_and},
    {Tok::BITOR, "BITOR", va64_orr, va64_orr},
    {Tok::LEFTSHIFT, "LEFTSHIFT", va64_lslv, va64_lslv},
    {Tok::RIGHTSHIFT, "RIGHTSHIFT", va64_asrv, va64_lsrv},
    // Both sides are 0 or 1.
    {Tok::AND, "", va64_and, va64_and},
    {Tok::OR, "", va64_orr, va64_orr},
};

const Operation* OperationOf(Tok op) {
  for (const Operation& row : kOperations) {
    if (row.op == op) return &row;
  }
  return nullptr;
}

bool NumberOf(const TacOperand& operand, int64_t* number) {
  if (operand.kind != TacOperand::Kind::kNumber) return false;
  const char* last = operand.text.data() + operand.text.size();
  const auto [end, error] = std::from_chars(operand.text.data(), last, *number);
  return error == std::errc() && end == last;
}

// "uload2" has no sign and two bytes.
AccessWidth WidthOf(std::string_view mnemonic) {
  const int bytes = mnemonic.empty() ? 8 : mnemonic.back() - '0';
  return {bytes, mnemonic.starts_with('u')};
}

}  // namespace

std::string_view a64_optype_name(Tok op) {
  const Operation* operation = OperationOf(op);
  return operation == nullptr ? std::string_view() : operation->name;
}

A64Function::Select A64Function::SelectionOf(AsmOp op) {
  struct Row {
    AsmOp op;
    Select select;
  };
  using F = A64Function;
  static constexpr Row kRows[] = {
      {INVALID_ASMOP, &F::SelectNothing},
      {ASMOP_JMP, &F::SelectJump},
      {ASMOP_JNE, &F::SelectJump},
      {ASMOP_JE, &F::SelectJump},
      {ASMOP_CMP_SYMVAR_WITH_SYMVAR, &F::SelectCompare},
      {ASMOP_CMP_SYMVAR_WITH_NUMBER, &F::SelectCompare},
      {ASMOP_CMP_TMPVAR_WITH_NUMBER, &F::SelectCompare},
      {ASMOP_CMP_SYMVAR_WITH_TMPVAR, &F::SelectCompare},
      {ASMOP_CMP_TMPVAR_WITH_SYMVAR, &F::SelectCompare},
      {ASMOP_CMP_TMPVAR_WITH_TMPVAR, &F::SelectCompare},
      {ASMOP_PUSH_SYMBOL_PTR, &F::SelectPush},
      {ASMOP_PUSH_TMPVAR, &F::SelectPush},
      {ASMOP_PUSH_REG, &F::SelectNothing},
      {ASMOP_POP_REG, &F::SelectNothing},
      {ASMOP_MOVE_REG_TO_VAR, &F::SelectMoveFromRegister},
      {ASMOP_MOVE_VAR_TO_REG, &F::SelectMoveToRegister},
      {ASMOP_CALL, &F::SelectCall},
      {ASMOP_LABEL, &F::SelectLabel},
      {ASMOP_GOTO_LABEL, &F::SelectLabel},
      {ASMOP_LOADIMMED, &F::SelectNumber},
      {ASMOP_BASIC_BLOCK_BEGIN_LABEL, &F::SelectNothing},
      {ASMOP_FUNCTION_HEADER, &F::SelectHeader},
      {ASMOP_FUNCTION_FOOTER, &F::SelectFooter},
      {ASMOP_PLAIN_TEXT, &F::SelectText},
      {ASMOP_OPCODE_LOADADDR_TMPVAR_SYMVAR, &F::SelectAddressOfName},
      {ASMOP_OPCODE_LOAD_TMPVAR_TMPVAR_TMPVAR, &F::SelectMemory},
      {ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_TMPVAR, &F::SelectArithmetic},
      {ASMOP_OPCODE_MUL_TMPVAR_SYMVAR_NUMBER, &F::SelectArithmetic},
      {ASMOP_OPCODE_MUL_TMPVAR_TMPVAR_NUMBER, &F::SelectArithmetic},
      {ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_NUMBER, &F::SelectArithmetic},
      {ASMOP_OPCODE_LOAD_TMPVAR_TMPVAR_NUMBER, &F::SelectMemory},
      {ASMOP_OPCODE_LOAD_TMPVAR_TMPVAR, &F::SelectMemory},
      {ASMOP_LOADIMMED_TMPVAR_NUMBER, &F::SelectNumber},
      {ASMOP_OPCODE_CLR_TMPVAR, &F::SelectClear},
      {ASMOP_OPCODE_STORE_TMPVAR_TMPVAR_TMPVAR, &F::SelectMemory},
      {ASMOP_OPCODE_STORE_TMPVAR_TMPVAR_NUMBER, &F::SelectMemory},
      {ASMOP_OPCODE_STORE_TMPVAR_TMPVAR, &F::SelectMemory},
      {ASMOP_OPCODE_SUB_TMPVAR_REG_NUMBER, &F::SelectAddressInFrame},
      {ASMOP_COMMENT, &F::SelectNothing},
      {ASMOP_SOURCE_LINE, &F::SelectNothing},
  };
  static constexpr size_t kOps = 64;
  static const std::array<Select, kOps> kTable = [] {
    std::array<Select, kOps> table{};
    for (const Row& row : kRows) table[row.op] = row.select;
    return table;
  }();
  return op < kOps ? kTable[op] : nullptr;
}

bool A64Function::a64_select(const Instruction& instruction) {
  const TargetOptions& target = procedure_.slot.Target;
  bool selected = !instruction.is_inexact && target.cpu_size == 64 && target.address_size == 64;
  if (selected) {
    const Select select = instruction.is_asm ? SelectionOf(instruction.asmop) : &A64Function::SelectPlain;
    selected = select != nullptr && (this->*select)(instruction) && !enc_.error;
  }
  frame_.Done(instruction);
  return selected;
}

bool A64Function::SelectPlain(const Instruction& instruction) {
  switch (instruction.op) {
    case Tok::ASSIGN: return SelectAssign(instruction);
    case Tok::UNARYMINUS:
    case Tok::NOT:
    case Tok::TILDA: return SelectUnary(instruction);
    case Tok::PLUS_PLUS:
    case Tok::MINUS_MINUS:
    case Tok::POST_PLUS_PLUS:
    case Tok::POST_MINUS_MINUS: return SelectStep(instruction);
    default: return SelectBinary(instruction);
  }
}

bool A64Function::SelectAssign(const Instruction& instruction) {
  return Read(instruction.operand2, kX9) && Write(instruction.operand1, kX9);
}

bool A64Function::SelectUnary(const Instruction& instruction) {
  if (!Read(instruction.operand1, kX9)) return false;
  if (instruction.op == Tok::UNARYMINUS) {
    va64_sub(enc_, kX11, kXzr, kX9);
  } else if (instruction.op == Tok::TILDA) {
    va64_movn(enc_, kX10, 0, 0);
    va64_eor(enc_, kX11, kX9, kX10);
  } else {
    va64_cmp_imm(enc_, kX9, 0);
    va64_cset(enc_, kX11, kEq);
  }
  if (instruction.is_int32) va64_sxtw(enc_, kX11, kX11);
  return Write(instruction.result, kX11);
}

bool A64Function::SelectBinary(const Instruction& instruction) {
  const Operation* operation = OperationOf(instruction.op);
  if (operation == nullptr) return false;
  const bool compares = operation->condition != kNoCondition;
  const Operate operate = instruction.is_unsigned ? operation->operate_unsigned : operation->operate;
  if (!compares && operate == nullptr) return false;
  if (!Read(instruction.operand1, kX9) || !Read(instruction.operand2, kX10)) return false;
  if (compares) {
    va64_cmp(enc_, kX9, kX10);
    va64_cset(enc_, kX11, instruction.is_unsigned ? operation->condition_unsigned : operation->condition);
  } else {
    operate(enc_, kX11, kX9, kX10);
    if (instruction.is_int32) va64_sxtw(enc_, kX11, kX11);
  }
  return Write(instruction.result, kX11);
}

bool A64Function::SelectStep(const Instruction& instruction) {
  const TacOperand& variable = instruction.operand1;
  const bool up = instruction.op == Tok::PLUS_PLUS || instruction.op == Tok::POST_PLUS_PLUS;
  const int64_t size = variable.indirection == kByObject ? instruction.number : 1;
  if (!Read(variable, kX9)) return false;
  AddNumber(kX11, kX9, up ? size : -size);
  return Write(variable, kX11);
}

bool A64Function::SelectCompare(const Instruction& instruction) {
  int64_t number = 0;
  const bool is_number = NumberOf(instruction.operand2, &number);
  if (!Read(instruction.operand1, kX9)) return false;
  if (is_number && number >= 0 && number <= kMostImmediate)
    return va64_cmp_imm(enc_, kX9, static_cast<int32_t>(number)) == 0;
  return Read(instruction.operand2, kX10) && va64_cmp(enc_, kX9, kX10) == 0;
}

bool A64Function::SelectJump(const Instruction& instruction) {
  const int32_t label = LabelOf(instruction.label);
  if (instruction.asmop == ASMOP_JMP) return va64_b(enc_, label) == 0;
  return va64_bcond(enc_, instruction.asmop == ASMOP_JE ? kEq : kNe, label) == 0;
}

bool A64Function::SelectLabel(const Instruction& instruction) {
  return PlaceLabel(instruction.label);
}

bool A64Function::SelectHeader(const Instruction& instruction) {
  return parameters_taken_ || instruction.text == "BEGIN";
}

bool A64Function::SelectFooter(const Instruction&) {
  return va64_b(enc_, end_label_) == 0;
}

bool A64Function::SelectText(const Instruction& instruction) {
  if (instruction.is_source_text) return false;
  if (instruction.sets_return_reg) {
    TacOperand number;
    number.kind = TacOperand::Kind::kNumber;
    number.text = instruction.text.substr(instruction.text.find(',') + 1);
    number.text.remove_prefix(std::min(number.text.find_first_not_of(' '), number.text.size()));
    number.text = number.text.substr(0, number.text.find(' '));
    if (!Read(number, kX0)) return false;
    GiveResult();
    return true;
  }
  const bool is_return = instruction.no_translation && instruction.text.ends_with("_return:");
  return !is_return || PlaceLabel(instruction.text.substr(0, instruction.text.size() - 1));
}

bool A64Function::SelectNumber(const Instruction& instruction) {
  return Read(instruction.operand2, kX9) && Write(instruction.result, kX9);
}

bool A64Function::SelectClear(const Instruction& instruction) {
  return Write(instruction.result, kXzr);
}

bool A64Function::SelectAddressOfName(const Instruction& instruction) {
  return Read(instruction.operand1, kX9) && Write(instruction.result, kX9);
}

bool A64Function::SelectAddressInFrame(const Instruction& instruction) {
  const int32_t place = frame_.OfDistance(static_cast<int32_t>(instruction.number));
  if (instruction.reg != "FRAMEPTR" || place < 0) return false;
  va64_add_imm(enc_, kX9, kSp, place, 0);
  return Write(instruction.result, kX9);
}

bool A64Function::SelectMemory(const Instruction& instruction) {
  const bool store = (InfoOf(instruction.asmop).uses & kStored) != 0;
  if (!Read(instruction.operand1, kX9)) return false;
  if (instruction.operand2.IsVariable()) {
    if (!Read(instruction.operand2, kX10)) return false;
    va64_add(enc_, kX9, kX9, kX10);
  } else if (instruction.number != 0) {
    AddNumber(kX9, kX9, instruction.number);
  }
  const Place memory{kX9, 0, WidthOf(instruction.mnemonic)};
  if (store) {
    if (!Read(instruction.result, kX11)) return false;
    Store(kX11, memory);
    return true;
  }
  Load(kX11, memory);
  return Write(instruction.result, kX11);
}

bool A64Function::SelectArithmetic(const Instruction& instruction) {
  if (!Read(instruction.operand1, kX9)) return false;
  if (instruction.asmop == ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_TMPVAR) {
    if (!Read(instruction.operand2, kX10)) return false;
    va64_add(enc_, kX11, kX9, kX10);
  } else if (instruction.asmop == ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_NUMBER) {
    AddNumber(kX11, kX9, instruction.number);
  } else {
    va64_mov_imm64(enc_, kX10, static_cast<uint64_t>(instruction.number));
    va64_mul(enc_, kX11, kX9, kX10);
  }
  return Write(instruction.result, kX11);
}

}  // namespace vorc
