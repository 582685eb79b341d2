#include "retarget/rv_coverage.h"

#include <algorithm>
#include <iterator>

#include "base/format.h"

namespace vorc {
namespace {

struct OperationName {
  Tok op;
  const char* name;
};
constexpr OperationName kOperationNames[] = {
    {Tok::AND, "AND (logical)"},
    {Tok::OR, "OR (logical)"},
    {Tok::LT, "LT"},
    {Tok::GT, "GT"},
    {Tok::NE, "NE"},
    {Tok::LE, "LE"},
    {Tok::GE, "GE"},
    {Tok::EQ, "EQ"},
    {Tok::PLUS, "PLUS"},
    {Tok::MINUS, "MINUS"},
    {Tok::UNARYMINUS, "UNARYMINUS"},
    {Tok::STAR, "STAR multiply - needs -core=rv32im"},
    {Tok::SLASH, "DIV - needs -core=rv32im"},
    {Tok::DIV, "DIV - needs -core=rv32im"},
    {Tok::MOD, "MOD - needs -core=rv32im"},
    {Tok::ASSIGN, "ASSIGN"},
    {Tok::INVERT, "INVERT (~)"},
    {Tok::TILDA, "INVERT (~)"},
    {Tok::XOR, "XOR"},
    {Tok::BITAND, "BITAND"},
    {Tok::BITOR, "BITOR"},
    {Tok::LEFTSHIFT, "LEFTSHIFT"},
    {Tok::RIGHTSHIFT, "RIGHTSHIFT"},
    {Tok::NOT, "NOT"},
    {Tok::PLUS_PLUS, "PLUS_PLUS"},
    {Tok::MINUS_MINUS, "MINUS_MINUS"},
    {Tok::HAT, "HAT (^)"},
};

struct OpcodeName {
  int asmop;
  const char* name;
};
constexpr OpcodeName kOpcodeNames[] = {
    {ASMOP_JMP, "JMP"},
    {ASMOP_JNE, "JNE"},
    {ASMOP_JE, "JE"},
    {ASMOP_PUSH_SYMBOL_PTR, "PUSH_SYMBOL_PTR"},
    {ASMOP_PUSH_TMPVAR, "PUSH_TMPVAR"},
    {ASMOP_PUSH_REG, "PUSHREG"},
    {ASMOP_POP_REG, "POP"},
    {ASMOP_MOVE_REG_TO_VAR, "MOVE_REG_TO_VAR"},
    {ASMOP_MOVE_VAR_TO_REG, "MOVE_VAR_TO_REG"},
    {ASMOP_CALL, "CALL"},
    {ASMOP_LABEL, "LABEL"},
    {ASMOP_GOTO_LABEL, "GOTO_LABEL"},
    {ASMOP_LOADIMMED, "LOADIMMED"},
    {ASMOP_BASIC_BLOCK_BEGIN_LABEL, "BASIC_BLOCK_BEGIN_LABEL"},
    {ASMOP_FUNCTION_HEADER, "LABEL_FUNCTION_HEADER"},
    {ASMOP_FUNCTION_FOOTER, "LABEL_FUNCTION_FOOTER"},
    {ASMOP_PLAIN_TEXT, "ASMCODE_NO_TRANSLATION_NEEDED"},
    {ASMOP_OPCODE_LOADADDR_TMPVAR_SYMVAR, "LOADADDR_TMPVAR_SYMVAR"},
    {ASMOP_OPCODE_LOAD_TMPVAR_TMPVAR_TMPVAR, "LOAD_TMPVAR_TMPVAR_TMPVAR"},
    {ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_TMPVAR, "ADD_TMPVAR_TMPVAR_TMPVAR"},
    {ASMOP_OPCODE_MUL_TMPVAR_TMPVAR_NUMBER, "MUL_TMPVAR_TMPVAR_NUMBER"},
    {ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_NUMBER, "ADD_TMPVAR_TMPVAR_NUMBER"},
    {ASMOP_OPCODE_LOAD_TMPVAR_TMPVAR_NUMBER, "LOAD_TMPVAR_TMPVAR_NUMBER"},
    {ASMOP_OPCODE_LOAD_TMPVAR_TMPVAR, "LOAD_TMPVAR_TMPVAR"},
    {ASMOP_LOADIMMED_TMPVAR_NUMBER, "LOADIMMED_TMPVAR_NUMBER"},
    {ASMOP_OPCODE_CLR_TMPVAR, "CLR_TMPVAR"},
    {ASMOP_OPCODE_STORE_TMPVAR_TMPVAR_TMPVAR, "STORE_TMPVAR_TMPVAR_TMPVAR"},
    {ASMOP_OPCODE_STORE_TMPVAR_TMPVAR_NUMBER, "STORE_TMPVAR_TMPVAR_NUMBER"},
    {ASMOP_OPCODE_STORE_TMPVAR_TMPVAR, "STORE_TMPVAR_TMPVAR"},
    {ASMOP_COMMENT, "GENERAL_COMMENT"},
    {ASMOP_SOURCE_LINE, "SOURCE_LINE_TEXT"},
};

std::string OperationLine(int op, int count) {
  const auto row =
      std::find_if(std::begin(kOperationNames), std::end(kOperationNames),
                   [op](const OperationName& candidate) { return static_cast<int>(candidate.op) == op; });
  if (row == std::end(kOperationNames)) return Format("  operation optype#%-13d x%d\n", op, count);
  return Format("  operation %-22s x%d\n", row->name, count);
}

std::string OpcodeLine(int asmop, int count) {
  const auto row = std::find_if(std::begin(kOpcodeNames), std::end(kOpcodeNames),
                                [asmop](const OpcodeName& candidate) { return candidate.asmop == asmop; });
  if (row == std::end(kOpcodeNames)) return Format("  ASMOP #%-27d x%d\n", asmop, count);
  return Format("  %-32s x%d\n", row->name, count);
}

}  // namespace

void RvCoverage::CountUnhandled(const Instruction& record) {
  ++unhandled_;
  if (record.op != Tok::NOTOKEN)
    ++operations_[std::min(static_cast<size_t>(record.op), kTokens - 1)];
  else
    ++opcodes_[std::min<size_t>(record.asmop, kAsmOps - 1)];
}

void RvCoverage::AddMissing(std::string* text) const {
  for (size_t op = 0; op < kTokens; ++op) {
    if (operations_[op] > 0) *text += OperationLine(static_cast<int>(op), operations_[op]);
  }
  for (size_t asmop = 0; asmop < kAsmOps; ++asmop) {
    if (opcodes_[asmop] > 0) *text += OpcodeLine(static_cast<int>(asmop), opcodes_[asmop]);
  }
}

std::string RvCoverage::Summary(int pool) const {
  std::string text = Format(
      "\n=== RV32 back end coverage ===\n"
      "basic blocks seen : %d\n"
      "statements emitted: %d\n"
      "statements unhandled: %d\n",
      blocks_, emitted_, unhandled_);
  std::string missing;
  AddMissing(&missing);
  if (!missing.empty()) text += "still to implement:\n" + missing;
  if (missing.empty() && unhandled_ == 0) text += "every statement in this compile was translated.\n";
  return text + Format(
                    "register assignments: %d (block-local, one register per variable from\n"
                    "  a %d-register caller-saved pool; anything past that stays in its frame\n"
                    "  slot. Colour REUSE is deferred - see rv32_allocate_block for why\n"
                    "  vorc's live_range_end cannot be trusted for it yet.)\n",
                    registers_, pool);
}

}  // namespace vorc
