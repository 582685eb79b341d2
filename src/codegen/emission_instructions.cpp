#include "codegen/emission.h"
#include "codegen/rendering.h"

namespace vorc {

namespace {

struct OperatorName {
  Tok op;
  std::string_view name;
  std::string_view unsigned_name;
  bool sized;
};
// DIV stands for the remainder among the tokens; the division is SLASH.
constexpr OperatorName kOperatorNames[] = {
    {Tok::AND, "AND", "AND", true},
    {Tok::BITAND, "AND", "AND", true},
    {Tok::OR, "OR", "OR", true},
    {Tok::BITOR, "OR", "OR", true},
    {Tok::LT, "CMPL", "CMPLU", false},
    {Tok::GT, "CMPG", "CMPGU", false},
    {Tok::NE, "CMPNE", "CMPNE", false},
    {Tok::LE, "CMPLE", "CMPLEU", false},
    {Tok::GE, "CMPGE", "CMPGEU", false},
    {Tok::EQ, "CMPEQ", "CMPEQ", false},
    {Tok::PLUS, "ADD", "ADD", true},
    {Tok::MINUS, "SUB", "SUB", true},
    {Tok::STAR, "MUL", "MUL", true},
    {Tok::SLASH, "DIV", "DIVU", true},
    {Tok::DIV, "MOD", "MODU", true},
    {Tok::MOD, "MOD", "MODU", true},
    {Tok::XOR, "XOR", "XOR", true},
    {Tok::LEFTSHIFT, "SHL", "SHL", true},
    {Tok::RIGHTSHIFT, "SHR", "SHRU", true},
};

const OperatorName* get_operator_name_for_codegen(Tok op) {
  for (const OperatorName& row : kOperatorNames) {
    if (row.op == op) return &row;
  }
  return nullptr;
}

}  // namespace

// Brings an operand into a register and answers its number. A constant needs the scratch register; so
// does the address of a variable, and the variable itself where it has no colour.
int BlockEmitter::Read(const Instruction& instruction, const TacOperand& operand, int scratch) {
  const std::string_view name = RegisterName(scratch);
  if (operand.kind == TacOperand::Kind::kLabel) {
    Line("loadaddr ", name, ", ", operand.text);
    return scratch;
  }
  if (!operand.IsVariable()) {
    Line(mnemonics_.loadimm, ' ', name, " ,", vorc_imm_for_target(procedure_.slot.Target, operand.text));
    return scratch;
  }
  LiveRange* range = ColouredAt(operand.variable, instruction.index);
  if (range == nullptr) {
    WriteAddress(operand.variable, scratch);
    Line(LoadMnemonicOf(operand.variable), ' ', name, " ,[", name, ']');
    return scratch;
  }
  if (MustReload(operand.variable, *range)) {
    WriteAddress(operand.variable, scratch);
    Line(LoadMnemonicOf(operand.variable), ' ', RegisterName(range->register_position), " ,[", name, ']');
    range->value_loaded = true;
  }
  return range->register_position;
}

// The colour of an operand, -1 for none.
int BlockEmitter::ColourOf(const Instruction& instruction, const TacOperand& operand) {
  if (!operand.IsVariable()) return -1;
  const LiveRange* range = ColouredAt(operand.variable, instruction.index);
  return range == nullptr ? -1 : range->register_position;
}

// The register that a definition writes.
int BlockEmitter::Target(const Instruction& instruction, const TacOperand& operand) {
  const int colour = ColourOf(instruction, operand);
  return colour < 0 ? static_cast<int>(kRr61) : colour;
}

// Ends a definition: the value goes to memory where it must.
void BlockEmitter::Finish(const Instruction& instruction, const TacOperand& operand, int reg, bool store,
                          std::string_view before_address) {
  LiveRange* range = ColouredAt(operand.variable, instruction.index);
  if (range != nullptr) range->value_loaded = true;
  if (range != nullptr && !store && !MustStore(operand.variable)) return;
  WriteAddress(operand.variable, kRr62);
  Line(StoreMnemonicOf(operand.variable), ' ', RegisterName(reg), before_address, "[rr62]");
}

// The same for a value without a colour that was worked on in rr62.
void BlockEmitter::StoreScratch(const TacOperand& operand) {
  WriteAddress(operand.variable, kRr61);
  Line(StoreMnemonicOf(operand.variable), " rr62 , [rr61]");
}

void BlockEmitter::Emit(const Instruction& instruction) {
  line_ = instruction.line.Line;
  if (instruction.is_marker) {
    assembly_.Write("/*", Padded{line_, 6}, ":*///", instruction.text, '\n');
    return;
  }
  log_.Write("\n -------\n//ASSEMBLY CODE: ", three_address_instruction_str(procedure_, instruction), '\n');
  if (instruction.is_asm)
    EmitAssembly(instruction);
  else
    EmitPlain(instruction);
}

void BlockEmitter::EmitPlain(const Instruction& instruction) {
  if (instruction.address_code_type == ADDRESS_CODE_TYPE_TWO_ADDRESS_CODE)
    log_.Write("//ADDRESS_CODE_TYPE_TWO_ADDRESS_CODE \n");
  switch (instruction.op) {
    case Tok::ASSIGN: return EmitAssign(instruction);
    case Tok::UNARYMINUS:
    case Tok::NOT:
    case Tok::TILDA: return EmitUnary(instruction);
    case Tok::PLUS_PLUS:
    case Tok::MINUS_MINUS:
    case Tok::POST_PLUS_PLUS:
    case Tok::POST_MINUS_MINUS: return EmitStep(instruction);
    default: return EmitBinary(instruction);
  }
}

void BlockEmitter::EmitAssign(const Instruction& instruction) {
  const TacOperand& value = instruction.operand2;
  const int colour = ColourOf(instruction, instruction.operand1);
  const int target = Target(instruction, instruction.operand1);
  log_.Write("//optype=ASSIGN dest_reg=", colour,
             ",operand1_reg=-1,operand2_reg=", ColourOf(instruction, value), '\n');
  if (value.kind == TacOperand::Kind::kString) {
    Line("loadaddr rr62, ", value.text);
    if (colour < 0) return StoreScratch(instruction.operand1);
    Line(mnemonics_.word_move, ' ', RegisterName(colour), " ,rr62");
  } else if (value.IsConstant()) {
    Line(mnemonics_.loadimm, "  ", RegisterName(target), ',',
         vorc_imm_for_target(procedure_.slot.Target, value.text));
  } else {
    const int source = Read(instruction, value, kRr62);
    Line(mnemonics_.word_move, "  ", RegisterName(target), ',', RegisterName(source));
  }
  Finish(instruction, instruction.operand1, target);
}

// An unsigned int lies zero-extended in a wider register, where both shifts to the right do the same.
bool BlockEmitter::NeedsUnsignedForm(const Instruction& instruction) const {
  const bool narrow = !instruction.is_wide && mnemonics_.cpu_bytes == 8;
  return instruction.is_unsigned && !(narrow && instruction.op == Tok::RIGHTSHIFT);
}

void BlockEmitter::EmitBinary(const Instruction& instruction) {
  const OperatorName* name = get_operator_name_for_codegen(instruction.op);
  log_.Write("//ADDRESS_CODE_TYPE_THREE_ADDRESS_CODE dest_reg=", ColourOf(instruction, instruction.result),
             ",operand1_reg=", ColourOf(instruction, instruction.operand1),
             ",operand2_reg=", ColourOf(instruction, instruction.operand2), '\n');
  if (name == nullptr) return Line("NOP");
  const int first = Read(instruction, instruction.operand1, kRr62);
  const bool immediate = instruction.operand2.kind == TacOperand::Kind::kNumber;
  const int second = immediate ? 0 : Read(instruction, instruction.operand2, kRr61);
  const int target = Target(instruction, instruction.result);
  const std::string_view stem = NeedsUnsignedForm(instruction) ? name->unsigned_name : name->name;
  const std::string_view size(&mnemonics_.word_digit, name->sized ? 1 : 0);
  Line(stem, size, "  ", RegisterName(target), ',', RegisterName(first), ',',
       immediate ? vorc_imm_for_target(procedure_.slot.Target, instruction.operand2.text)
                 : std::string(RegisterName(second)));
  Finish(instruction, instruction.result, target);
}

void BlockEmitter::EmitUnary(const Instruction& instruction) {
  const std::string_view source = RegisterName(Read(instruction, instruction.operand1, kRr62));
  const int target = Target(instruction, instruction.result);
  const std::string_view name = RegisterName(target);
  if (instruction.op == Tok::NOT) {
    Line("CMPEQ  ", name, ',', source, ",0");
  } else if (instruction.op == Tok::TILDA) {
    Line("XOR8  ", name, ',', source, ",-1");
  } else {
    Line("clr8  ", name);
    Line("SUB8  ", name, ',', name, ',', source);
  }
  Finish(instruction, instruction.result, target);
}

void BlockEmitter::EmitStep(const Instruction& instruction) {
  const TacOperand& variable = instruction.operand1;
  const bool up = instruction.op == Tok::PLUS_PLUS || instruction.op == Tok::POST_PLUS_PLUS;
  const int reg = Read(instruction, variable, kRr62);
  const std::string_view name = RegisterName(reg);
  if (variable.indirection == kByObject)
    Line(up ? mnemonics_.addr_add : mnemonics_.addr_sub, ' ', name, " , ", name, " , ", instruction.number);
  else
    Line(up ? "inc " : "dec ", name);
  if (reg == kRr62) return StoreScratch(variable);
  Finish(instruction, variable, reg);
}

void BlockEmitter::EmitAssembly(const Instruction& instruction) {
  switch (instruction.asmop) {
    case INVALID_ASMOP:
    case ASMOP_BASIC_BLOCK_BEGIN_LABEL: return;
    case ASMOP_CMP_SYMVAR_WITH_SYMVAR:
    case ASMOP_CMP_SYMVAR_WITH_NUMBER:
    case ASMOP_CMP_TMPVAR_WITH_NUMBER:
    case ASMOP_CMP_SYMVAR_WITH_TMPVAR:
    case ASMOP_CMP_TMPVAR_WITH_SYMVAR:
    case ASMOP_CMP_TMPVAR_WITH_TMPVAR: return EmitCompare(instruction);
    case ASMOP_PUSH_SYMBOL_PTR:
    case ASMOP_PUSH_TMPVAR: return EmitPush(instruction);
    case ASMOP_MOVE_REG_TO_VAR: {
      const int target = Target(instruction, instruction.result);
      Line(mnemonics_.word_move, ' ', RegisterName(target), target == kRr61 ? ", " : " ,", instruction.reg);
      // What is popped next may go to the very register.
      return Finish(instruction, instruction.result, target, true, ", ");
    }
    case ASMOP_MOVE_VAR_TO_REG: {
      const int source = Read(instruction, instruction.operand1, kRr61);
      return Line(mnemonics_.word_move, "  ", instruction.reg, source == kRr61 ? " ," : ", ",
                  RegisterName(source));
    }
    case ASMOP_POP_REG: {
      EmitText(instruction);
      return ForgetRegister(instruction.reg);
    }
    case ASMOP_CALL: {
      EmitText(instruction);
      return ForgetAll();
    }
    case ASMOP_LOADIMMED:
    case ASMOP_LOADIMMED_TMPVAR_NUMBER: {
      const int target = Target(instruction, instruction.result);
      Line(mnemonics_.loadimm, ' ', RegisterName(target), " ,",
           vorc_imm_for_target(procedure_.slot.Target, instruction.operand2.text));
      return Finish(instruction, instruction.result, target, false, target == kRr61 ? ", " : " ,");
    }
    case ASMOP_OPCODE_CLR_TMPVAR: {
      const int target = Target(instruction, instruction.result);
      Line("clr8  ", RegisterName(target));
      return Finish(instruction, instruction.result, target);
    }
    case ASMOP_OPCODE_LOADADDR_TMPVAR_SYMVAR:
    case OPCODE_LOADADDR_STRUCT_VAR_TMPVAR_SYMVAR:
    case ASMOP_OPCODE_SUB_TMPVAR_REG_NUMBER: return EmitLoadAddress(instruction);
    case ASMOP_OPCODE_LOAD_TMPVAR_TMPVAR_TMPVAR:
    case ASMOP_OPCODE_LOAD_TMPVAR_TMPVAR_NUMBER:
    case ASMOP_OPCODE_LOAD_TMPVAR_TMPVAR:
    case ASMOP_OPCODE_STORE_TMPVAR_TMPVAR_TMPVAR:
    case ASMOP_OPCODE_STORE_TMPVAR_TMPVAR_NUMBER:
    case ASMOP_OPCODE_STORE_TMPVAR_TMPVAR: return EmitMemory(instruction);
    case ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_TMPVAR:
    case ASMOP_OPCODE_MUL_TMPVAR_SYMVAR_NUMBER:
    case ASMOP_OPCODE_MUL_TMPVAR_TMPVAR_NUMBER:
    case ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_NUMBER: return EmitArithmetic(instruction);
    default: return EmitText(instruction);
  }
}

void BlockEmitter::EmitCompare(const Instruction& instruction) {
  const std::string_view first = RegisterName(Read(instruction, instruction.operand1, kRr62));
  if (instruction.operand2.kind == TacOperand::Kind::kNumber) {
    return Line(mnemonics_.compare, "  ", first, ',',
                vorc_imm_for_target(procedure_.slot.Target, instruction.operand2.text));
  }
  Line(mnemonics_.compare, "  ", first, ',', RegisterName(Read(instruction, instruction.operand2, kRr61)));
}

void BlockEmitter::EmitPush(const Instruction& instruction) {
  const int source = Read(instruction, instruction.operand1, kRr61);
  if (source != kRr61) return Line(instruction.mnemonic, ' ', RegisterName(source));
  Line(mnemonics_.word_move, " KERNELREG0,rr61");
  Line(instruction.mnemonic, " KERNELREG0");
}

void BlockEmitter::EmitLoadAddress(const Instruction& instruction) {
  const int target = Target(instruction, instruction.result);
  if (instruction.operand1.kind == TacOperand::Kind::kLabel)
    Line("loadaddr ", RegisterName(target), ", ", instruction.operand1.text);
  else
    Line(mnemonics_.addr_sub, ' ', RegisterName(target), " ,FRAMEPTR, ", instruction.number);
  Finish(instruction, instruction.result, target);
}

void BlockEmitter::EmitMemory(const Instruction& instruction) {
  const bool store = (InfoOf(instruction.asmop).uses & kStored) != 0;
  const int value = store ? Read(instruction, instruction.result, kRr61) : 0;
  const std::string_view base = RegisterName(Read(instruction, instruction.operand1, kRr62));
  std::string place = "[" + std::string(base);
  if (instruction.operand2.IsVariable())
    place += "," + std::string(RegisterName(Read(instruction, instruction.operand2, kRr63)));
  else if (instruction.number != 0)
    place += "," + std::to_string(instruction.number);
  place += "]";
  const int target = store ? value : Target(instruction, instruction.result);
  Line(instruction.mnemonic, "  ", RegisterName(target), ',', place);
  if (store)
    ForgetShared();
  else
    Finish(instruction, instruction.result, target);
}

void BlockEmitter::EmitArithmetic(const Instruction& instruction) {
  const std::string_view first = RegisterName(Read(instruction, instruction.operand1, kRr62));
  const int target = Target(instruction, instruction.result);
  const std::string_view name = RegisterName(target);
  if (instruction.asmop == ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_TMPVAR) {
    const std::string_view second = RegisterName(Read(instruction, instruction.operand2, kRr63));
    Line("ADD", mnemonics_.word_digit, "  ", name, ',', first, ',', second);
  } else if (instruction.asmop == ASMOP_OPCODE_ADD_TMPVAR_TMPVAR_NUMBER) {
    Line("add", mnemonics_.word_digit, "  ", name, ',', first, ',', instruction.number);
  } else {
    Line(instruction.is_unsigned ? "mulu8  " : "mul8  ", name, ',', first, ',', instruction.number);
  }
  Finish(instruction, instruction.result, target);
}

void BlockEmitter::EmitText(const Instruction& instruction) {
  if (instruction.sets_return_reg) {  // brings the line's mark itself
    assembly_.Write(instruction.text, '\n');
    log_.Write(instruction.text, '\n');
    return;
  }
  Line(three_address_instruction_str(procedure_, instruction, std::string_view::npos));
  const int32_t size = procedure_.locals_size + 8 * procedure_.tmpvar_count;
  if (instruction.text.ends_with("FRAMEPTR,STACKPTR") && instruction.no_translation && size > 0)
    Line(mnemonics_.addr_sub, " STACKPTR,STACKPTR,", size);
}

}  // namespace vorc
