#include "codegen/passes.h"

namespace vorc {

namespace {

constexpr int kMostIterations = 200;
constexpr int32_t kNowhere = -1;
constexpr int32_t kReadBefore = -2;  ///< not defined so far, and in USE already

/// Marks variables, cheap to clear.
class Marks {
 public:
  explicit Marks(size_t variables) : stamps_(variables, 0) {}

  void Clear() { ++stamp_; }
  bool Has(int32_t variable) const { return stamps_[static_cast<size_t>(variable)] == stamp_; }
  /// False if it was marked already.
  bool Mark(int32_t variable) {
    if (Has(variable)) return false;
    stamps_[static_cast<size_t>(variable)] = stamp_;
    return true;
  }

 private:
  std::vector<int32_t> stamps_;
  int32_t stamp_ = 1;
};

// The log calls the temporary that an assignment copies a first operand.
int NamedKind(const Instruction& instruction, int kind) {
  const bool assigns = !instruction.is_asm && instruction.op == Tok::ASSIGN;
  return assigns && kind == THREE_ADDRESS_USE_VAR2_TEMPREGISTER ? THREE_ADDRESS_USE_VAR1_TEMPREGISTER : kind;
}

int UseKind(const TacOperand& operand, int place) {
  if (place == 0) return THREE_ADDRESS_USE_VAR0_TEMPREGISTER;
  const bool temp = operand.kind == TacOperand::Kind::kTemp;
  if (place == 1) return temp ? THREE_ADDRESS_USE_VAR1_TEMPREGISTER : THREE_ADDRESS_USE_VAR1_SYMBOLPTR;
  return temp ? THREE_ADDRESS_USE_VAR2_TEMPREGISTER : THREE_ADDRESS_USE_VAR2_SYMBOLPTR;
}

void LogVariable(Procedure& procedure, int32_t variable, int32_t index) {
  TextWriter& log = procedure.log();
  log.Write('\'');
  WriteVariable(log, procedure, variable);
  log.Write(" (addr=", Hex{static_cast<uint64_t>(variable) + 1, 8}, ")' at instruction '", index, "'  ");
}

void WriteNames(TextWriter& log, const Procedure& procedure, const std::vector<int32_t>& set) {
  for (const int32_t variable : set) {
    WriteVariable(log, procedure, variable);
    log.Write(',');
  }
}

}  // namespace

void three_address_code_identify_def_and_use_vars(Procedure& procedure, BasicBlock& block) {
  TextWriter& log = procedure.log();
  log.Write("----------------------------------------------------------------------\n",
            "--------------three_address_code_identify_def_and_use_vars BEGIN -----\n");
  // Where in the block a variable was defined. A stored temporary counts as defined by its store.
  std::vector<int32_t>& defined_at = procedure.scratch;
  defined_at.resize(procedure.variables.size(), kNowhere);
  std::vector<int32_t> touched;
  const auto define = [&](const TacOperand& operand, int32_t index) {
    defined_at[static_cast<size_t>(operand.variable)] = index;
    touched.push_back(operand.variable);
  };
  for (const Instruction* at = block.first; at != nullptr; at = at->next_in_block) {
    if (at->is_marker) continue;
    if (at->is_asm) log.Write(InfoOf(at->asmop).name, ": ", at->text, '\n');
    const InstructionVariables variables = VariablesOf(*at);
    for (int place = 0; place < 3; ++place) {
      const TacOperand* use = variables.used[place];
      if (use == nullptr) continue;
      LogVariable(procedure, use->variable, at->index);
      const int32_t previous = defined_at[static_cast<size_t>(use->variable)];
      if (previous >= 0) {
        log.Write("defined/modified in the previous instruction:", previous, " and not an IN var \n");
        continue;
      }
      log.Write("identified as possible IN var -> ",
                three_address_var_type_name(NamedKind(*at, UseKind(*use, place))), '\n');
      if (previous == kNowhere) {
        defined_at[static_cast<size_t>(use->variable)] = kReadBefore;
        touched.push_back(use->variable);
        block.USE.push_back(use->variable);
      } else {
        log.Write("insert_usevar:Duplicate USE var=");
        WriteVariable(log, procedure, use->variable);
        log.Write(" found in the bb USE var list, var not added in the USE var list\n");
      }
    }
    if (at->is_asm && (InfoOf(at->asmop).uses & kStored) != 0) define(at->result, at->index);
    if (variables.defined == nullptr) continue;
    LogVariable(procedure, variables.defined->variable, at->index);
    log.Write("identified as DEF var -> THREE_ADDRESS_DEF_VAR_TEMPREGISTER\n");
    block.DEF.push_back(variables.defined->variable);
    define(*variables.defined, at->index);
  }
  for (const int32_t variable : touched) defined_at[static_cast<size_t>(variable)] = kNowhere;
}

void ThreeAddress_PerformVariableLivenessAnalysis(Procedure& procedure) {
  TextWriter& log = procedure.log();
  log.Write("/* \tFIRST STAGE IN AND OUT ANALYSIS FOR function: '", procedure.name, "' /\n");
  Marks in_set(procedure.variables.size());
  Marks defined(procedure.variables.size());
  const auto insert_all = [&](std::vector<int32_t>* set, const std::vector<int32_t>& members) {
    for (const int32_t variable : members) {
      if (in_set.Mark(variable)) set->push_back(variable);
    }
  };
  int iteration = 0;
  bool changed = true;
  while (changed && iteration < kMostIterations) {
    changed = false;
    log.Write("\n/* === Liveness iteration ", ++iteration, " === */\n");
    for (size_t i = 0; i < procedure.blocks.size(); ++i) {
      BasicBlock& block = procedure.blocks[i];
      const size_t before = block.IN.size();
      block.OUT.clear();
      in_set.Clear();
      // The next block counts even behind a jump, and only the first target of several.
      if (i + 1 < procedure.blocks.size()) insert_all(&block.OUT, procedure.blocks[i + 1].IN);
      if (!block.jump_successors.empty()) insert_all(&block.OUT, block.jump_successors.front()->IN);
      defined.Clear();
      for (const int32_t variable : block.DEF) defined.Mark(variable);
      in_set.Clear();
      block.IN.clear();
      insert_all(&block.IN, block.USE);
      for (const int32_t variable : block.OUT) {
        if (!defined.Has(variable) && in_set.Mark(variable)) block.IN.push_back(variable);
      }
      changed |= block.IN.size() != before;
      log.Write("/*  block ", block.bb_no, ": IN size ", before, "->", block.IN.size(), "  OUT size ",
                block.OUT.size(), " */\n");
    }
  }
  log.Write("/* Liveness fixed-point reached in ", iteration, " iteration(s) */\n");
}

void print_in_out_vars_summary(Procedure& procedure) {
  TextWriter& log = procedure.log();
  for (const BasicBlock& block : procedure.blocks) {
    log.Write("== basic block no ", block.bb_no, " VARS SUMMARY--->/\nIN VARS={");
    WriteNames(log, procedure, block.IN);
    log.Write("}\nOUT VARS={");
    WriteNames(log, procedure, block.OUT);
    log.Write("}\n== END -> basic block no ", block.bb_no,
              " VARS SUMMARY--->/\n               * * *                       /\n");
  }
}

}  // namespace vorc
