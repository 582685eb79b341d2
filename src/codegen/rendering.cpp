#include "codegen/rendering.h"

#include "program/operators.h"

namespace vorc {

namespace {

std::string Step(const Instruction& instruction, const char* sign) {
  const std::string name = OperandName(instruction.operand1);
  if (instruction.operand1.indirection == kByObject)
    return name + " = " + name + " " + sign + " " + std::to_string(instruction.number);
  return name + " = " + name + " " + sign + " 1 ";
}

std::string Plain(const Instruction& instruction) {
  const std::string right = OperandName(instruction.operand2);
  switch (instruction.op) {
    case Tok::ASSIGN: return OperandName(instruction.operand1) + " = " + right;
    case Tok::PLUS_PLUS:
    case Tok::POST_PLUS_PLUS: return Step(instruction, "+");
    case Tok::MINUS_MINUS:
    case Tok::POST_MINUS_MINUS: return Step(instruction, "-");
    case Tok::NOT: return OperandName(instruction.result) + " = !" + OperandName(instruction.operand1);
    default: break;
  }
  return OperandName(instruction.result) + " = " + OperandName(instruction.operand1) + " " +
         std::string(OpString(instruction.op)) + " " + right;
}

}  // namespace

std::string OperandName(const TacOperand& operand) {
  switch (operand.kind) {
    case TacOperand::Kind::kTemp: return "tmpreg_" + std::to_string(operand.temp);
    case TacOperand::Kind::kSymbol: return std::string(operand.symbol->name->Text);
    case TacOperand::Kind::kString: return {};
    default: return std::string(operand.text);
  }
}

std::string_view OpString(Tok op) {
  const OperatorInfo& info = OperatorOf(op);
  switch (info.kind) {
    case OperatorKind::kCompare:
    case OperatorKind::kBits:
    case OperatorKind::kShift:
    case OperatorKind::kSum:
    case OperatorKind::kProduct: return info.sign;
    // The texts know `%=` as a division.
    case OperatorKind::kCompound: return op == Tok::DIV_EQ ? "/" : OperatorOf(info.plain).sign;
    default: return {};
  }
}

std::string_view asmop_string(int asmop) {
  switch (asmop) {
    case INVALID_ASMOP:
    case ASMOP_JNE:
    case ASMOP_JE:
    case ASMOP_GOTO_LABEL:
    case ASMOP_BASIC_BLOCK_BEGIN_LABEL: return InfoOf(static_cast<AsmOp>(asmop)).name;
    case ASMOP_PUSH_REG:
    case ASMOP_FUNCTION_HEADER:
    case ASMOP_FUNCTION_FOOTER:
    case ASMOP_PLAIN_TEXT: return {};
    default: break;
  }
  const bool unused = asmop >= 10 && asmop <= 21;
  return asmop >= 4 && asmop <= 50 && !unused ? "ASMOP_LABEL" : std::string_view();
}

std::string_view address_code_type_string(AddressCodeType type) {
  switch (type) {
    case ADDRESS_CODE_TYPE_TWO_ADDRESS_CODE: return "ADDRESS_CODE_TYPE_TWO_ADDRESS_CODE";
    case ADDRESS_CODE_TYPE_ONE_ADDRESS_CODE: return "ADDRESS_CODE_TYPE_ONE_ADDRESS_CODE";
    default: return "ADDRESS_CODE_TYPE_THREE_ADDRESS_CODE";
  }
}

std::string three_address_instruction_str(const Procedure&, const Instruction& instruction, size_t longest) {
  if (!instruction.is_asm) return Plain(instruction);
  const char* jump = instruction.asmop == ASMOP_JNE   ? "JNE "
                     : instruction.asmop == ASMOP_JE  ? "JE "
                     : instruction.asmop == ASMOP_JMP ? "JMP "
                                                      : "";
  return jump + std::string(instruction.text.substr(0, longest));
}

}  // namespace vorc
