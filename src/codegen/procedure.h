#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/arena.h"
#include "base/text_writer.h"
#include "codegen/instruction.h"
#include "codegen/unnamed_strings.h"
#include "program/slot.h"

// All state of code generation. What belongs to one procedure lives in `Procedure` and is given back
// when its code stands; what spans procedures lives in `CodegenContext`.

namespace vorc {

struct LiveRange;
struct Procedure;

/// A value of one variable within a block, from its definition (or the block's entry) to its last use.
struct LiveRange {
  int32_t variable = kNoVariable;
  int32_t live_range_begin = 0;
  int32_t live_range_end = 0;
  int32_t register_position = -1;  ///< colour, -1 for none
  bool register_assigned = false;
  bool live_on_entry = false;
  bool value_loaded = false;  ///< the register holds what the variable holds
  bool defined = false;
  bool used = false;
  bool removed_from_G = false;
  int32_t def_count = 0;
  int32_t use_count = 0;
  int32_t degree = 0;               ///< neighbours that are still in the graph
  std::vector<int32_t> neighbours;  ///< numbers of ranges of the same block, in list order
};

struct BasicBlock {
  int32_t bb_no = 0;
  Instruction* first = nullptr;
  Instruction* last = nullptr;
  std::vector<BasicBlock*> jump_successors;
  std::vector<BasicBlock*> predecessors;
  std::vector<int32_t> DEF;  ///< variables, one entry a definition
  std::vector<int32_t> USE;  ///< read before they are defined; like IN and OUT in the order they were met
  std::vector<int32_t> IN;
  std::vector<int32_t> OUT;
  std::vector<LiveRange> ranges;
  bool fall_through_successor_next_basic_block_not_used_for_out_var_calc_because_of_absoulte_jump = false;
  bool fall_through_successors_prev_basic_block_not_used_for_predecessor_calc_because_of_absoulte_jump =
      false;
};

/// What a symbol or a temporary is to the passes: one number in its procedure.
struct Variable {
  int32_t temp = kNoTemp;
  const SYM_REC* symbol = nullptr;
  int32_t mentions = 0;
  bool shared = false;  ///< memory behind it may change without naming it: a global, or its address is taken
};

/// Place of a parameter or local relative to FRAMEPTR, and its bytes.
struct FrameSlot {
  bool is_parameter = false;
  int32_t offset = 0;  ///< above FRAMEPTR for a parameter, below it for a local
  int32_t width = 0;
};

struct Mnemonics;
class BlockHook;

/// What the procedures of a compilation share.
struct CodegenContext {
  CodegenContext(C_SLOT& the_slot, const Mnemonics& the_mnemonics, TextWriter& the_assembly,
                 TextWriter& the_analysis, TextWriter& the_tac, TextWriter& the_ai_input, BlockHook* the_hook)
      : slot(the_slot),
        mnemonics(the_mnemonics),
        assembly(the_assembly),
        analysis(the_analysis),
        tac(the_tac),
        ai_input(the_ai_input),
        hook(the_hook) {}

  C_SLOT& slot;
  const Mnemonics& mnemonics;
  TextWriter& assembly;
  TextWriter& analysis;  ///< code_gen_analysis.txt
  TextWriter& tac;       ///< datafile_tac.txt
  TextWriter& ai_input;  ///< ai_tac_analysis_input.txt
  BlockHook* hook;
  const FUNCPROTO_REC* entry = nullptr;  ///< the program's first function
  UnnamedStrings strings;
  int32_t label_counter = 1;
  int32_t indirect_calls = 0;
  int32_t tac_samples = 0;
  int32_t procedures = 0;
  std::string label_stem{};  ///< name of the source as it stands in labels
  std::unordered_map<const FUNCPROTO_REC*, std::string> asm_names{};
  std::unordered_set<std::string> taken_names{};
};

/// A label of the source and the block that it begins. Labels in a row share one group.
struct LabelGroup {
  std::vector<const STATEMENT_BLOCK*> labels;
  BasicBlock* block = nullptr;
};

/// A `goto` ahead of its label.
struct ForwardGoto {
  const Name* label;
  BasicBlock* from;
};

/// Where `break` and `continue` of a loop or switch go, and the blocks that ended in one.
struct Jumps {
  int32_t break_target = 0;
  int32_t continue_target = 0;
  std::vector<BasicBlock*> break_chain;
  std::vector<BasicBlock*> continue_chain;
};

/// One procedure on its way from its statements to its text.
struct Procedure {
  Procedure(CodegenContext& the_context, FUNCPROTO_REC* the_proto, std::string_view the_name)
      : context(the_context), slot(the_context.slot), proto(the_proto), name(the_name) {}

  CodegenContext& context;
  C_SLOT& slot;
  FUNCPROTO_REC* proto;
  std::string_view name;  ///< as the assembler sees it
  Arena memory;

  int32_t tmpvar_count = 0;
  int32_t locals_size = 0;
  int32_t total_arg_size = 0;
  std::unordered_map<const SYM_REC*, FrameSlot> frame;
  std::unordered_set<const SYM_REC*> address_taken;

  std::deque<BasicBlock> blocks;  ///< in the order of their making
  BasicBlock* current_bb = nullptr;
  BasicBlock* return_bb = nullptr;
  Instruction* first = nullptr;
  Instruction* last = nullptr;
  int32_t instruction_count = 0;

  std::vector<BasicBlock*> return_jump_chain;
  std::vector<ForwardGoto> forward_goto_chain;
  std::vector<LabelGroup> label_groups;
  std::unordered_set<const Name*> goto_labels;  ///< that some `goto` or assembly text names
  std::vector<std::string_view> asm_texts;
  std::unordered_map<const STATEMENT_BLOCK*, Jumps> jumps;
  bool too_deep = false;  ///< the statements nest deeper than the host's stack allows

  std::vector<Variable> variables;
  std::unordered_map<int64_t, int32_t> variable_numbers;
  int32_t occurrences = 0;
  std::vector<int32_t> scratch;                 ///< a number a variable, -1 outside of the pass that uses it
  std::vector<std::vector<int32_t>> ranges_of;  ///< of the block in hand, by variable

  TextWriter& log() { return context.analysis; }
  /// Bytes of the registers that expressions are worked out in.
  int RegisterBytes() const;
  /// True if a variable may stay in a register, so that no memory cuts what is assigned to it.
  bool KeepsValuesInRegisters() const;
  int32_t NewTemp() { return tmpvar_count++; }
  /// Bytes below FRAMEPTR at which a temporary's home lies.
  int32_t HomeOf(int32_t temp) const { return locals_size + 8 * temp + 8; }
  BasicBlock* AddBlock();
  /// A text that lives as long as the procedure.
  std::string_view Keep(std::string_view text) { return {memory.Copy(text), text.size()}; }
};

/// A source line as the outputs quote it: a very long one is cut, since each of its statements quotes it
/// again.
std::string_view QuotedLine(const C_SLOT& slot, SourceLine line);
/// Writes a variable's name: "tmpreg_N" or the symbol's own.
void WriteVariable(TextWriter& out, const Procedure& procedure, int32_t variable);
/// The name that the assembler sees for a function.
std::string_view AsmNameOf(CodegenContext& context, const FUNCPROTO_REC* function);
/// Adds both sides of a jump edge.
void AddJumpEdge(BasicBlock* from, BasicBlock* to);
void ThreeAddress_AddBasicBlockPredecesor(BasicBlock* from, BasicBlock* to);

}  // namespace vorc
