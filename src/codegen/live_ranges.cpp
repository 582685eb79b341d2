#include <algorithm>

#include "base/format.h"
#include "codegen/block_hook.h"
#include "codegen/passes.h"
#include "codegen/rendering.h"

namespace vorc {

namespace {

constexpr int32_t kNoRange = -1;
constexpr int kErrorMissing = 83;

/// Builds the ranges of one block, instruction by instruction.
class RangeBuilder {
 public:
  /// `last_range` holds kNoRange for every variable, and does so again afterwards.
  RangeBuilder(Procedure& procedure, BasicBlock& block, std::vector<int32_t>& last_range)
      : procedure_(procedure), block_(block), last_range_(last_range) {}
  ~RangeBuilder() {
    for (const LiveRange& range : block_.ranges) Last(range.variable) = kNoRange;
  }
  RangeBuilder(const RangeBuilder&) = delete;
  RangeBuilder& operator=(const RangeBuilder&) = delete;

  void Run();

 private:
  int32_t& Last(int32_t variable) { return last_range_[static_cast<size_t>(variable)]; }
  void Define(const Instruction& instruction, int32_t variable);
  void Use(const Instruction& instruction, int32_t variable);
  LiveRange& NewRange(int32_t variable, int32_t begin, int32_t end);
  void WarnOfGlobal(const Instruction& instruction, const SYM_REC* symbol);
  bool MakesNoRange(const Instruction& instruction);

  Procedure& procedure_;
  BasicBlock& block_;
  std::vector<int32_t>& last_range_;
};

bool RangeBuilder::MakesNoRange(const Instruction& instruction) {
  if (!instruction.is_asm) return false;
  switch (instruction.asmop) {
    case INVALID_ASMOP:
    case ASMOP_JNE:
    case ASMOP_JE:
    case ASMOP_CALL:
    case ASMOP_LABEL:
    case ASMOP_GOTO_LABEL:
    case ASMOP_BASIC_BLOCK_BEGIN_LABEL:
    case ASMOP_OPCODE_STORE_TMPVAR_TMPVAR_NUMBER:
      procedure_.log().Write("\ninstruction_index:", Padded{instruction.index, 8}, ' ',
                             three_address_instruction_str(procedure_, instruction),
                             " -> live range not calculated\n");
      return true;
    case ASMOP_FUNCTION_HEADER:
    case ASMOP_FUNCTION_FOOTER:
    case ASMOP_PLAIN_TEXT:
    case ASMOP_COMMENT: procedure_.log().Write("-> boilerplate, live range not calculated\n"); return true;
    default: return false;
  }
}

void RangeBuilder::Run() {
  for (const Instruction* at = block_.first; at != nullptr; at = at->next_in_block) {
    if (at->is_marker || MakesNoRange(*at)) continue;
    const InstructionVariables variables = VariablesOf(*at);
    for (const TacOperand* use : variables.used) {
      if (use != nullptr) Use(*at, use->variable);
    }
    if (variables.defined != nullptr) Define(*at, variables.defined->variable);
  }
}

LiveRange& RangeBuilder::NewRange(int32_t variable, int32_t begin, int32_t end) {
  Last(variable) = static_cast<int32_t>(block_.ranges.size());
  LiveRange& range = block_.ranges.emplace_back();
  range.variable = variable;
  range.live_range_begin = begin;
  range.live_range_end = end;
  return range;
}

void RangeBuilder::Define(const Instruction& instruction, int32_t variable) {
  const bool always_new = !instruction.is_asm && (instruction.op == Tok::UNARYMINUS ||
                                                  instruction.op == Tok::NOT || instruction.op == Tok::TILDA);
  const int32_t last = Last(variable);
  if (last != kNoRange && !always_new) {
    LiveRange& range = block_.ranges[static_cast<size_t>(last)];
    if (range.live_range_end == instruction.index) {
      ++range.def_count;
      range.defined = true;
      return;
    }
  }
  LiveRange& range = NewRange(variable, instruction.index, instruction.index);
  range.def_count = 1;
  range.defined = true;
}

void RangeBuilder::Use(const Instruction& instruction, int32_t variable) {
  const int32_t last = Last(variable);
  if (last == kNoRange) {
    const SYM_REC* symbol = procedure_.variables[static_cast<size_t>(variable)].symbol;
    if (symbol != nullptr) WarnOfGlobal(instruction, symbol);
    LiveRange& range = NewRange(variable, 0, instruction.index);
    range.live_on_entry = true;
    range.used = true;
    range.use_count = 1;
    return;
  }
  LiveRange& range = block_.ranges[static_cast<size_t>(last)];
  range.live_range_end = instruction.index;
  range.used = true;
  ++range.use_count;
}

void RangeBuilder::WarnOfGlobal(const Instruction& instruction, const SYM_REC* symbol) {
  const auto slot = procedure_.frame.find(symbol);
  const std::string name(procedure_.name);
  if (slot != procedure_.frame.end()) {
    if (slot->second.is_parameter) {
      procedure_.log().Write("CreateLivenessRange[L22530]: location 4.1 function: ", name,
                             " : parameter variable ", symbol->name->Text, "  is added in the \n");
    }
    return;
  }
  if ((symbol->StorageType & EXTERN_VAR) != 0 || symbol->OwnerStruct != nullptr) return;
  procedure_.slot.WarningAt(
      instruction.line,
      Format("function: %s : Global variable %s  is not intialized but used in the expression\n",
             name.c_str(), symbol->name->c_str()));
}

// A register that holds a value to the block's end must not be given to a later definition.
void ExtendLiveOut(Procedure& procedure, BasicBlock& block) {
  int32_t block_end = -1;
  for (const LiveRange& range : block.ranges) block_end = std::max(block_end, range.live_range_end);
  for (const int32_t variable : block.OUT) {
    LiveRange* furthest = nullptr;
    for (const int32_t number : procedure.ranges_of[static_cast<size_t>(variable)]) {
      LiveRange& range = block.ranges[static_cast<size_t>(number)];
      if (furthest == nullptr || range.live_range_end > furthest->live_range_end) furthest = &range;
    }
    if (furthest == nullptr || furthest->live_range_end >= block_end) continue;
    TextWriter& log = procedure.log();
    log.Write("LIVE_OUT_EXTEND: bb no=", block.bb_no, ": '");
    WriteVariable(log, procedure, variable);
    log.Write("' is live-out, extending its live range end from ", furthest->live_range_end,
              " to the block end ", block_end, " so a later definition cannot reuse its register\n");
    furthest->live_range_end = block_end;
  }
}

void DumpRanges(Procedure& procedure, const BasicBlock& block) {
  TextWriter& log = procedure.log();
  log.Write("\n\n........... Dump live ranges  for  bb no=", block.bb_no, "  BEGIN.............\n");
  for (const LiveRange& range : block.ranges) {
    log.Write("variable name=");
    WriteVariable(log, procedure, range.variable);
    log.Write(" live_range_begin=", range.live_range_begin, " live_range_end=", range.live_range_end,
              " tavlr->use_count=", range.use_count, " tavlr->def_count=", range.def_count, '\n');
  }
  log.Write("............ Dump live ranges  for  bb no=", block.bb_no, "  END ............\n\n");
}

// Which ranges of the block belong to each variable.
void IndexRanges(Procedure& procedure, const BasicBlock& block) {
  procedure.ranges_of.resize(procedure.variables.size());
  for (size_t i = 0; i < block.ranges.size(); ++i) {
    procedure.ranges_of[static_cast<size_t>(block.ranges[i].variable)].push_back(static_cast<int32_t>(i));
  }
}

void ForgetRanges(Procedure& procedure, BasicBlock& block) {
  for (const LiveRange& range : block.ranges)
    procedure.ranges_of[static_cast<size_t>(range.variable)].clear();
  block.ranges = {};
}

bool FinishBlock(Procedure& procedure, BasicBlock& block) {
  RangeBuilder(procedure, block, procedure.scratch).Run();
  IndexRanges(procedure, block);
  DumpRanges(procedure, block);
  ExtendLiveOut(procedure, block);
  if (!FindInterference(procedure, block)) {
    procedure.slot.ErrorAt(block.first->line, kErrorMissing,
                           Format("Function '%s' has a block with too many values that are alive at once.",
                                  std::string(procedure.name).c_str()));
    return false;
  }
  if (procedure.context.hook != nullptr) {
    procedure.context.hook->GenerateBasicBlock(procedure, block);
  } else {
    GregChaitin_1982_color(procedure, block);
    EmitBlock(procedure, block);
  }
  ForgetRanges(procedure, block);
  return true;
}

}  // namespace

bool CreateLivenessRange(Procedure& procedure) {
  TextWriter& log = procedure.log();
  log.Write(
      "@@@@@@@@@@@@@@@@@@@@@ FUNCTION '", procedure.name,
      "':  Createing Variable Live Range and register color allocation per basic block BEGIN @@@@@@@@@@\n");
  procedure.scratch.assign(procedure.variables.size(), kNoRange);
  for (BasicBlock& block : procedure.blocks) {
    log.Write("Block no = ", block.bb_no, '\n');
    if (!FinishBlock(procedure, block)) return false;
  }
  log.Write("@@@@@@@@@@@@@@@@@@@@@  FUNCTION '", procedure.name,
            "': Variable Live Range and register color allocation per basic block END @@@@@@@@@@\n");
  return true;
}

}  // namespace vorc
