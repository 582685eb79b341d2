#include "retarget/rv_trace.h"

#include <algorithm>
#include <charconv>

namespace vorc {
namespace {

constexpr size_t kLongestText = 255;

void WriteName(TextWriter& out, const TacOperand& operand) {
  switch (operand.kind) {
    case TacOperand::Kind::kTemp: return out.Write("tmpreg_", operand.temp);
    case TacOperand::Kind::kSymbol: return out.Write(operand.symbol->name->Text);
    default: return out.Write(operand.text);
  }
}

Tok TokenOf(TacOperand::Kind kind) {
  switch (kind) {
    case TacOperand::Kind::kSymbol:
    case TacOperand::Kind::kLabel: return Tok::IDENTIFIER;
    case TacOperand::Kind::kNumber: return Tok::NUMBER;
    case TacOperand::Kind::kReal: return Tok::REAL_NUMBER;
    case TacOperand::Kind::kString: return Tok::STRING;
    default: return Tok::NOTOKEN;
  }
}

void WriteOperand(TextWriter& out, std::string_view name, const TacOperand& operand) {
  if (operand.kind == TacOperand::Kind::kNone) return;
  const bool is_temp = operand.kind == TacOperand::Kind::kTemp;
  const bool is_number = operand.kind == TacOperand::Kind::kNumber;
  const SYM_REC* symbol = operand.kind == TacOperand::Kind::kSymbol ? operand.symbol : nullptr;
  const std::string_view symbol_name = symbol != nullptr                          ? symbol->name->Text
                                       : operand.kind == TacOperand::Kind::kLabel ? operand.text
                                                                                  : std::string_view();
  int64_t number = 0;
  if (is_number) std::from_chars(operand.text.data(), operand.text.data() + operand.text.size(), number);
  out.Write(";    ", name, ": token=", static_cast<int>(TokenOf(operand.kind)), " '",
            symbol == nullptr ? operand.text : symbol_name, "' tmpvar='");
  if (is_temp) WriteName(out, operand);
  out.Write("' sym='", symbol_name, "' numvalid=", is_number ? 1 : 0, " num=", static_cast<uint64_t>(number),
            " star=", symbol == nullptr ? 0 : symbol->TotalDepth,
            " datatype=", symbol == nullptr ? 0 : static_cast<int>(symbol->ValueType), '\n');
}

}  // namespace

void RvTraceRecord(TextWriter& out, const Instruction& record) {
  // All source-line markers are one record without a number or a text.
  out.Write("; stmt#", record.is_marker ? 0 : record.index,
            " actype=", static_cast<int>(record.address_code_type), " asmop=", static_cast<int>(record.asmop),
            " optype=", static_cast<int>(record.op), " opname='",
            record.op == Tok::NOTOKEN ? std::string_view() : TokenName(record.op), "' res='");
  WriteName(out, record.result);
  out.Write("' op1='");
  WriteName(out, record.operand1);
  out.Write("' op2='");
  WriteName(out, record.operand2);
  out.Write("' num=", static_cast<int32_t>(record.number), " asmbuf='");
  std::string text(record.is_marker ? "" : record.text.substr(0, kLongestText));
  text.erase(text.find_last_not_of('\n') + 1);
  std::replace(text.begin(), text.end(), '\n', ' ');  // a comment in the listing is one line
  out.Write(text, "'\n");
  if (record.Is(ASMOP_MOVE_VAR_TO_REG)) out.Write(";    movevar='", record.reg, "'\n");
  WriteOperand(out, "res", record.result);
  WriteOperand(out, "op1", record.operand1);
  WriteOperand(out, "op2", record.operand2);
}

}  // namespace vorc
