#include "codegen/passes.h"
#include "codegen/rendering.h"

namespace vorc {

namespace {

void WriteFlags(TextWriter& out, const TacOperand& operand, int count) {
  const int flags[] = {operand.kind == TacOperand::Kind::kTemp,
                       operand.kind == TacOperand::Kind::kSymbol,
                       operand.kind == TacOperand::Kind::kNumber,
                       operand.kind == TacOperand::Kind::kReal,
                       operand.kind == TacOperand::Kind::kString,
                       operand.kind == TacOperand::Kind::kLabel,
                       operand.indirection,
                       operand.temp,
                       operand.variable};
  for (int i = 0; i < count; ++i) out.Write(flags[i], ',');
}

// A row of the array that an outside checker compiles: texts stand in quotes.
void WriteText(TextWriter& out, std::string_view text) {
  out.Write('"');
  for (const char c : text) {
    if (c == '"' || c == '\\') out.Write('\\');
    if (c == '\n') continue;
    out.Write(c);
  }
  out.Write('"');
}

void WriteOperand(TextWriter& out, const TacOperand& operand) {
  WriteText(out, OperandName(operand));
  out.Write(',');
  WriteFlags(out, operand, 8);
  WriteText(out, operand.IsConstant() ? operand.text : std::string_view());
  out.Write(',', static_cast<int>(operand.kind), ',', static_cast<int>(operand.indirection), ',');
}

void write_tac_sample(Procedure& procedure, const Instruction& instruction) {
  TextWriter& out = procedure.context.tac;
  const TacOperand* defined = VariablesOf(instruction).defined;
  const TacOperand none;
  const TacOperand& target = defined == nullptr ? none : *defined;
  out.Write(procedure.context.tac_samples++, ',', procedure.context.procedures, ',', procedure.name, ",{",
            instruction.index, ',', instruction.line.Line, ',',
            address_code_type_string(instruction.address_code_type), ',');
  WriteText(out, OperandName(target));
  out.Write(',');
  WriteFlags(out, target, 9);
  out.Write(instruction.is_asm ? "ASMOP_FLAG_TRUE" : "ASMOP_FLAG_FALSE", ',',
            asmop_string(instruction.is_asm ? instruction.asmop : 0), ',', TokenName(instruction.op), ',');
  WriteOperand(out, instruction.operand1);
  WriteOperand(out, instruction.operand2);
  WriteText(out, instruction.label);
  out.Write(", NULL},\n");
}

}  // namespace

void CreateThreeAddressSamplesForVerificationFileHeader(CodegenContext& context, std::string_view source,
                                                        std::string_view assembly) {
  context.tac.Write("char high_level_language_source_file_name[]=\"", source, "\";\n",
                    "char assembly_code_filename[]=\"", assembly, "\";\n",
                    "THREE_ADDRESS_CODE_ARRAY tac_array[]={\n");
}

void end_write_tac_sample(CodegenContext& context) {
  context.tac.Write("};\n");
}

void PrintFlattenedThreeAddressCode(Procedure& procedure) {
  TextWriter& log = procedure.log();
  for (Instruction* at = procedure.first; at != nullptr; at = at->next) {
    if (at->is_marker) continue;
    at->index = procedure.instruction_count++;
    const bool label = at->Is(ASMOP_LABEL) || at->Is(ASMOP_GOTO_LABEL);
    log.Write(label ? "instruction index:" : "instruction_index:", Padded{at->index, 8}, "  ",
              three_address_instruction_str(procedure, *at), '\n');
    write_tac_sample(procedure, *at);
  }
  log.Write("*** END Flattened three address code for function '", procedure.name, "' *** \n");
}

void print_basic_blocks(Procedure& procedure) {
  TextWriter& log = procedure.log();
  for (const BasicBlock& block : procedure.blocks) {
    log.Write("== Dumping block no ", block.bb_no, " ===\n");
    for (const Instruction* at = block.first; at != nullptr; at = at->next_in_block) {
      if (at->is_marker || at->Is(ASMOP_BASIC_BLOCK_BEGIN_LABEL)) continue;
      log.Write("instruction_index:", Padded{at->index, 8}, ": ",
                three_address_instruction_str(procedure, *at), '\n');
    }
    log.Write("== END-> Dumping block no ", block.bb_no, " ===\n--------------------------------\n\n");
  }
}

void DumpSuccessorsPredecessors(Procedure& procedure) {
  TextWriter& log = procedure.log();
  for (const BasicBlock& block : procedure.blocks) {
    const bool ends_in_jump =
        block.fall_through_successor_next_basic_block_not_used_for_out_var_calc_because_of_absoulte_jump;
    log.Write("\n*** BASIC BLOCK NUMBER=", block.bb_no,
              " INFORMATION***\nblock address=", Hex{static_cast<uint64_t>(block.bb_no), 8}, '\n');
    log.Write("fall_through_successor_next_basic_block_not_used_for_out_var_calc_because_of_absoulte_jump=",
              ends_in_jump ? 1 : 0, '\n');
    log.Write(
        "fall_through_successors_prev_basic_block_not_used_for_predecessor_calc_because_of_absoulte_jump=",
        block.fall_through_successors_prev_basic_block_not_used_for_predecessor_calc_because_of_absoulte_jump
            ? 1
            : 0,
        '\n');
    log.Write("\n>>>>>  Block No ", block.bb_no, " predecessors and successors\nPredecessors {");
    for (const BasicBlock* from : block.predecessors) log.Write(from->bb_no, ", ");
    log.Write("}\n     - - - \nSuccessors {");
    const bool last = static_cast<size_t>(block.bb_no) + 1 == procedure.blocks.size();
    if (!ends_in_jump && !last) log.Write(block.bb_no + 1, ", ");
    for (const BasicBlock* to : block.jump_successors) log.Write(to->bb_no, ", ");
    log.Write("}\n");
  }
}

}  // namespace vorc
