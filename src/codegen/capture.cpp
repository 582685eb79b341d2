#include "codegen/capture.h"

#include <utility>

#include "codegen/frame.h"

namespace vorc {

namespace {

Instruction* Add_flattened_three_address_code(Walk& walk) {
  Procedure& procedure = walk.procedure;
  auto* instruction = new (procedure.memory.Allocate(sizeof(Instruction))) Instruction();
  instruction->line = walk.line;
  instruction->is_inexact = std::exchange(walk.is_inexact, false);
  instruction->block = procedure.current_bb;
  BasicBlock* block = procedure.current_bb;
  (procedure.last == nullptr ? procedure.first : procedure.last->next) = instruction;
  procedure.last = instruction;
  (block->last == nullptr ? block->first : block->last->next_in_block) = instruction;
  block->last = instruction;
  return instruction;
}

AddressCodeType TypeOfPlain(Tok op) {
  switch (op) {
    case Tok::ASSIGN:
    case Tok::UNARYMINUS:
    case Tok::NOT:
    case Tok::TILDA:
    case Tok::PLUS_PLUS:
    case Tok::MINUS_MINUS:
    case Tok::POST_PLUS_PLUS:
    case Tok::POST_MINUS_MINUS: return ADDRESS_CODE_TYPE_TWO_ADDRESS_CODE;
    default: return ADDRESS_CODE_TYPE_THREE_ADDRESS_CODE;
  }
}

std::string_view NameIn(Procedure& procedure, const TacOperand& operand) {
  switch (operand.kind) {
    case TacOperand::Kind::kTemp: return Compose(procedure, TempName{operand.temp});
    case TacOperand::Kind::kSymbol: return operand.symbol->name->Text;
    default: return operand.text;
  }
}

bool IsWideNumber(AccessWidth width) {
  return width.bytes > 4 && !width.is_address;
}

bool IsTemp(const TacOperand& operand) {
  return operand.kind == TacOperand::Kind::kTemp;
}

void CaptureNumberCompare(Walk& walk, const TacOperand& a, int64_t number, std::string_view text) {
  const AsmOp op = IsTemp(a) ? ASMOP_CMP_TMPVAR_WITH_NUMBER : ASMOP_CMP_SYMVAR_WITH_NUMBER;
  Instruction& instruction = CaptureAssembly(walk, op, text);
  instruction.operand1 = a;
  instruction.operand2 = NumberOperand(walk.procedure, number);
}

}  // namespace

TacOperand TempOperand(int32_t temp) {
  TacOperand operand;
  operand.kind = TacOperand::Kind::kTemp;
  operand.temp = temp;
  return operand;
}

TacOperand SymbolOperand(const SYM_REC* symbol) {
  TacOperand operand;
  operand.kind = TacOperand::Kind::kSymbol;
  operand.symbol = symbol;
  return operand;
}

TacOperand TextOperand(std::string_view text) {
  TacOperand operand;
  operand.kind = TacOperand::Kind::kString;
  operand.text = text;
  return operand;
}

TacOperand NumberOperand(Procedure& procedure, int64_t number) {
  TacOperand operand;
  operand.kind = TacOperand::Kind::kNumber;
  operand.text = Compose(procedure, number);
  return operand;
}

void AddSourceLineToFtac(Walk& walk, SourceLine line) {
  walk.line = line;
  // What nothing of the statement before took is of no account.
  walk.is_inexact = false;
  Instruction* marker = Add_flattened_three_address_code(walk);
  marker->is_marker = true;
  marker->is_asm = true;
  marker->asmop = ASMOP_SOURCE_LINE;
  marker->text = QuotedLine(walk.slot, line);
}

Instruction& CapturePlain(Walk& walk, Tok op, const TacOperand& a, const TacOperand& b, int32_t result) {
  Instruction* instruction = Add_flattened_three_address_code(walk);
  instruction->op = op;
  instruction->operand1 = a;
  instruction->operand2 = b;
  if (result != kNoTemp) instruction->result = TempOperand(result);
  instruction->address_code_type = TypeOfPlain(op);
  return *instruction;
}

Instruction& CaptureAssembly(Walk& walk, AsmOp op, std::string_view text, std::string_view comment) {
  Instruction* instruction = Add_flattened_three_address_code(walk);
  instruction->is_asm = true;
  instruction->asmop = op;
  // A comment may bring its own blanks and mark.
  const std::string_view mark = comment.starts_with("  ") ? "" : " //";
  instruction->text = comment.empty() ? text : Compose(walk.procedure, text, mark, comment);
  if (op == ASMOP_JMP || op == ASMOP_JE || op == ASMOP_JNE)
    instruction->address_code_type = ADDRESS_CODE_TYPE_ONE_ADDRESS_CODE;
  return *instruction;
}

void CaptureComment(Walk& walk, std::string_view text) {
  CaptureAssembly(walk, ASMOP_COMMENT, text);
}

void CaptureJump(Walk& walk, AsmOp op, std::string_view target, std::string_view comment) {
  CaptureAssembly(walk, op, target, comment).label = target;
}

std::string_view LabelString(Procedure& procedure, int32_t number) {
  return Compose(procedure, procedure.context.label_stem, "_", number);
}

void CaptureLabel(Walk& walk, int32_t number, std::string_view comment) {
  const std::string_view label = LabelString(walk.procedure, number);
  CaptureAssembly(walk, ASMOP_LABEL, Compose(walk.procedure, label, ": \n"), comment).label = label;
}

void CaptureCompareWithNumber(Walk& walk, const TacOperand& a, int64_t number, std::string_view comment) {
  Procedure& procedure = walk.procedure;
  CaptureNumberCompare(walk, a, number,
                       Compose(procedure, "CMP8 ", NameIn(procedure, a), " , ", number, " , ", comment));
}

void CaptureCompareWithCase(Walk& walk, const TacOperand& a, int64_t value) {
  Procedure& procedure = walk.procedure;
  CaptureNumberCompare(walk, a, value, Compose(procedure, "CMP8 ", NameIn(procedure, a), ",", value));
}

void CaptureLoadImmediate(Walk& walk, int32_t temp, std::string_view number, std::string_view mnemonic) {
  Instruction& instruction =
      CaptureAssembly(walk, ASMOP_LOADIMMED_TMPVAR_NUMBER,
                      Compose(walk.procedure, mnemonic.empty() ? walk.mnemonics.loadimm : mnemonic, " ",
                              TempName{temp}, ",", number));
  instruction.result = TempOperand(temp);
  instruction.operand2.kind = TacOperand::Kind::kNumber;
  instruction.operand2.text = walk.procedure.Keep(number);
}

void CaptureClear(Walk& walk, int32_t temp, std::string_view comment) {
  CaptureAssembly(walk, ASMOP_OPCODE_CLR_TMPVAR, Compose(walk.procedure, "CLR ", TempName{temp}), comment)
      .result = TempOperand(temp);
}

void CaptureAddressOfGlobal(Walk& walk, int32_t temp, const SYM_REC* symbol, bool as_argument) {
  const std::string_view name = symbol->name->Text;
  Instruction& instruction =
      CaptureAssembly(walk, ASMOP_OPCODE_LOADADDR_TMPVAR_SYMVAR,
                      Compose(walk.procedure, as_argument ? "loadaddr " : "OPCODE_LOADADDR ", TempName{temp},
                              as_argument ? " ," : " ", name));
  instruction.result = TempOperand(temp);
  instruction.operand1.kind = TacOperand::Kind::kLabel;
  instruction.operand1.text = name;
  instruction.addressed = symbol;
}

void CaptureAddressOfLabel(Walk& walk, int32_t temp, std::string_view label, std::string_view comment) {
  Instruction& instruction =
      CaptureAssembly(walk, ASMOP_OPCODE_LOADADDR_TMPVAR_SYMVAR,
                      Compose(walk.procedure, "LOADADDR ", TempName{temp}, ", ", label, "\n"), comment);
  instruction.result = TempOperand(temp);
  instruction.operand1.kind = TacOperand::Kind::kLabel;
  instruction.operand1.text = walk.procedure.Keep(label);
}

Instruction& CaptureAddressInFrame(Walk& walk, int32_t temp, int32_t distance, std::string_view said,
                                   const SYM_REC* addressed) {
  const std::string_view comment = Compose(walk.procedure, "  //", said);
  Instruction& instruction =
      CaptureAssembly(walk, ASMOP_OPCODE_SUB_TMPVAR_REG_NUMBER,
                      Compose(walk.procedure, "sub8 ", TempName{temp}, " , FRAMEPTR , ", distance), comment);
  instruction.result = TempOperand(temp);
  instruction.reg = "FRAMEPTR";
  instruction.number = distance;
  instruction.addressed = addressed;
  return instruction;
}

void CaptureAddressOfObject(Walk& walk, int32_t temp, int32_t distance, const SYM_REC* symbol) {
  Instruction& instruction =
      CaptureAssembly(walk, ASMOP_OPCODE_LOADADDR_TMPVAR_SYMVAR,
                      Compose(walk.procedure, "OPCODE_LOADADDR ", TempName{temp}, " ", symbol->name->Text));
  instruction.result = TempOperand(temp);
  instruction.reg = "FRAMEPTR";
  instruction.number = distance;
  instruction.addressed = symbol;
}

void CaptureAddNumber(Walk& walk, int32_t result, int32_t a, int64_t number, std::string_view said) {
  const std::string_view comment = said.empty() ? said : Compose(walk.procedure, "  //", said);
  Instruction& instruction = CaptureAssembly(
      walk, ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_NUMBER,
      Compose(walk.procedure, "OPCODE_ADD ", TempName{result}, " ", TempName{a}, " ", number), comment);
  instruction.result = TempOperand(result);
  instruction.operand1 = TempOperand(a);
  instruction.number = number;
}

void CaptureMultiplyNumber(Walk& walk, int32_t result, const TacOperand& a, int64_t number,
                           bool is_unsigned) {
  Procedure& procedure = walk.procedure;
  const AsmOp op = IsTemp(a) ? ASMOP_OPCODE_MUL_TMPVAR_TMPVAR_NUMBER : ASMOP_OPCODE_MUL_TMPVAR_SYMVAR_NUMBER;
  Instruction& instruction = CaptureAssembly(
      walk, op, Compose(procedure, "OPCODE_MUL ", TempName{result}, " ", NameIn(procedure, a), " ", number));
  instruction.result = TempOperand(result);
  instruction.operand1 = a;
  instruction.number = number;
  instruction.is_unsigned = is_unsigned;
}

void CaptureAdd(Walk& walk, int32_t result, int32_t a, int32_t b) {
  Instruction& instruction = CaptureAssembly(
      walk, ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_TMPVAR,
      Compose(walk.procedure, "OPCODE_ADD ", TempName{result}, " ", TempName{a}, " ", TempName{b}));
  instruction.result = TempOperand(result);
  instruction.operand1 = TempOperand(a);
  instruction.operand2 = TempOperand(b);
}

void CaptureLoad(Walk& walk, int32_t result, int32_t base, AccessWidth width, std::string_view comment) {
  const std::string_view mnemonic = LoadMnemonic(width);
  Instruction& instruction = CaptureAssembly(
      walk, ASMOP_OPCODE_LOAD_TMPVAR_TMPVAR,
      Compose(walk.procedure, mnemonic, " ", TempName{result}, " , [", TempName{base}, "]"), comment);
  instruction.result = TempOperand(result);
  instruction.operand1 = TempOperand(base);
  instruction.mnemonic = mnemonic;
  instruction.is_wide = IsWideNumber(width);
}

void CapturePointerLoad(Walk& walk, int32_t result, int32_t base, std::string_view name) {
  CaptureLoad(walk, result, base, {walk.mnemonics.address_bytes, true, true});
  walk.procedure.last->text = Compose(walk.procedure, "OPCODE_LOAD ", TempName{result}, " [", TempName{base},
                                      "]  //value of pointer '", name, "'");
}

void CaptureStore(Walk& walk, int32_t value, int32_t base, AccessWidth width) {
  const std::string_view mnemonic = StoreMnemonic(width);
  Instruction& instruction =
      CaptureAssembly(walk, ASMOP_OPCODE_STORE_TMPVAR_TMPVAR,
                      Compose(walk.procedure, mnemonic, " ", TempName{value}, " , [", TempName{base}, "]"));
  instruction.result = TempOperand(value);
  instruction.operand1 = TempOperand(base);
  instruction.mnemonic = mnemonic;
  instruction.is_wide = IsWideNumber(width);
}

void CaptureModifiedStruct(Walk& walk, const SYM_REC* symbol) {
  CaptureAssembly(walk, INVALID_ASMOP, Compose(walk.procedure, "MODIFIED_STRUCT ", symbol->name->Text));
}

void CapturePush(Walk& walk, const TacOperand& value, int width, std::string_view comment,
                 const ValueType& type) {
  Procedure& procedure = walk.procedure;
  const std::string_view mnemonic = PushMnemonic(width);
  Instruction& instruction =
      CaptureAssembly(walk, IsTemp(value) ? ASMOP_PUSH_TMPVAR : ASMOP_PUSH_SYMBOL_PTR,
                      Compose(procedure, mnemonic, " ", NameIn(procedure, value)), comment);
  instruction.operand1 = value;
  instruction.mnemonic = mnemonic;
  instruction.passed = PassedOf(walk.slot, type);
}

void CapturePushRegister(Walk& walk, std::string_view reg) {
  CaptureAssembly(walk, ASMOP_PUSH_REG, Compose(walk.procedure, walk.mnemonics.push, " ", reg)).reg = reg;
}

void CapturePopRegister(Walk& walk, std::string_view reg) {
  CaptureAssembly(walk, ASMOP_POP_REG, Compose(walk.procedure, walk.mnemonics.pop, " ", reg)).reg = reg;
}

void CaptureMoveVarToReg(Walk& walk, std::string_view reg, const TacOperand& value,
                         std::string_view mnemonic) {
  Procedure& procedure = walk.procedure;
  Instruction& instruction =
      CaptureAssembly(walk, ASMOP_MOVE_VAR_TO_REG,
                      Compose(procedure, mnemonic, " ", reg, " , ", NameIn(procedure, value), " "));
  instruction.operand1 = value;
  instruction.reg = reg;
}

void CaptureMoveRegToVar(Walk& walk, int32_t temp, std::string_view reg) {
  Instruction& instruction =
      CaptureAssembly(walk, ASMOP_MOVE_REG_TO_VAR,
                      Compose(walk.procedure, walk.mnemonics.alu_move, " ", TempName{temp}, " , ", reg));
  instruction.result = TempOperand(temp);
  instruction.reg = reg;
}

BasicBlock* StartBlock(Walk& walk, std::string_view reason) {
  Procedure& procedure = walk.procedure;
  BasicBlock* block = procedure.AddBlock();
  procedure.current_bb = block;
  CaptureAssembly(walk, ASMOP_BASIC_BLOCK_BEGIN_LABEL,
                  Compose(procedure, ">>>>>>>>>>> New Basic Block Start here , Block Number_", block->bb_no,
                          ": ", reason, "\n"));
  return block;
}

}  // namespace vorc
