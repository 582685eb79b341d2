#include "base/format.h"
#include "codegen/walk.h"
#include "program/statement_tree.h"

namespace vorc {

namespace {

/// Case labels without statements between them: one place in the code.
struct CaseGroup {
  std::vector<const STATEMENT_BLOCK*> labels;
  int32_t label = 0;
  BasicBlock* block = nullptr;
  std::vector<BasicBlock*> jumps_from;
  bool has_default = false;
};

bool IsCaseLabel(const STATEMENT_BLOCK* statement) {
  return statement->StatementType == STATEMENT_TYPE_CASE ||
         statement->StatementType == STATEMENT_TYPE_DEFAULT;
}

std::vector<CaseGroup> CreateCaseStatementGroups(Walk& walk, const STATEMENT_BLOCK* statement) {
  std::vector<CaseGroup> groups;
  bool open = false;
  for (const STATEMENT_BLOCK* at = statement->Block->Statements.First; at != nullptr; at = at->Next) {
    if (!IsCaseLabel(at)) {
      open = false;
      continue;
    }
    if (!open) {
      groups.push_back({});
      groups.back().label = walk.procedure.context.label_counter++;
    }
    open = true;
    groups.back().labels.push_back(at);
    groups.back().has_default |= at->StatementType == STATEMENT_TYPE_DEFAULT;
  }
  TextWriter& log = walk.procedure.log();
  for (const CaseGroup& group : groups) {
    log.Write("case statement group {");
    for (const STATEMENT_BLOCK* label : group.labels) {
      if (label->StatementType == STATEMENT_TYPE_DEFAULT)
        log.Write("default, ");
      else
        log.Write(label->CaseValue, ", ");
    }
    log.Write("}\n");
  }
  return groups;
}

// A label as the condition's type has it: -1 is the largest unsigned int.
int64_t CaseValueFor(const Walk& walk, const ValueType& type, int64_t value) {
  const AccessWidth width = AccessOf(walk, type);
  const bool is_cut = walk.procedure.context.hook != nullptr && walk.procedure.RegisterBytes() == 8 &&
                      width.is_unsigned && width.bytes == 4;
  return is_cut ? static_cast<int64_t>(static_cast<uint32_t>(value)) : value;
}

// One compare and one jump a value, then the jump for all others.
void EmitLadder(Walk& walk, const TacOperand& value, const ValueType& type, std::vector<CaseGroup>* groups,
                std::string_view end, BasicBlock** last_of_ladder) {
  Procedure& procedure = walk.procedure;
  CaseGroup* fallback = nullptr;
  for (CaseGroup& group : *groups) {
    if (group.has_default) fallback = &group;
    for (const STATEMENT_BLOCK* label : group.labels) {
      if (label->StatementType == STATEMENT_TYPE_DEFAULT) continue;
      CaptureCompareWithCase(walk, value, CaseValueFor(walk, type, label->CaseValue));
      CaptureJump(walk, ASMOP_JE, LabelString(procedure, group.label));
      group.jumps_from.push_back(procedure.current_bb);
      BasicBlock* before = procedure.current_bb;
      ThreeAddress_AddBasicBlockPredecesor(before, StartBlock(walk, "next case of the switch"));
    }
  }
  CaptureJump(walk, ASMOP_JMP, fallback == nullptr ? end : LabelString(procedure, fallback->label));
  BasicBlock* last = procedure.current_bb;
  last->fall_through_successor_next_basic_block_not_used_for_out_var_calc_because_of_absoulte_jump = true;
  if (fallback != nullptr)
    fallback->jumps_from.push_back(last);
  else
    *last_of_ladder = last;
}

void EmitBodies(Walk& walk, const STATEMENT_BLOCK* statement, std::vector<CaseGroup>* groups) {
  size_t next = 0;
  bool open = false;
  bool left = false;
  for (const STATEMENT_BLOCK* at = statement->Block->Statements.First; at != nullptr; at = at->Next) {
    if (!IsCaseLabel(at)) {
      open = false;
      if (left) walk.slot.WarningAt(at->Line, "Code has no effect in the function");
      left |= at->StatementType == STATEMENT_TYPE_BREAK;
      ExecStatement(walk, at);
      continue;
    }
    left = false;
    if (open) continue;
    open = true;
    CaseGroup& group = (*groups)[next++];
    BasicBlock* before = walk.procedure.current_bb;
    group.block = StartBlock(walk, "case of the switch");
    ThreeAddress_AddBasicBlockPredecesor(before, group.block);
    for (BasicBlock* from : group.jumps_from) AddJumpEdge(from, group.block);
    CaptureLabel(walk, group.label);
  }
}

}  // namespace

void ExecSwitchStatement(Walk& walk, const STATEMENT_BLOCK* statement) {
  if (statement->Block == nullptr) return;
  Procedure& procedure = walk.procedure;
  const long errors = walk.slot.Display.ErrorCount;
  CheckSwitchStatementDuplicateCaseValues(walk.slot, statement);
  if (walk.slot.Display.ErrorCount != errors) return;
  const int32_t first_label = procedure.context.label_counter++;
  const int32_t second_label = procedure.context.label_counter++;
  procedure.jumps[statement] = {second_label, first_label, {}, {}};
  Operand condition = EvalExpression(walk, statement->Expression);
  if (condition.may_be_wide) condition = Converted(walk, condition, ValueType::Basic(Tok::INT64));
  TacOperand value = ValueOf(walk, condition, kForSwitch);
  if (!value.IsVariable()) {
    const int32_t temp = procedure.NewTemp();
    CaptureLoadImmediate(walk, temp, value.text);
    value = TempOperand(temp);
  }
  std::vector<CaseGroup> groups = CreateCaseStatementGroups(walk, statement);
  BasicBlock* last_of_ladder = nullptr;
  EmitLadder(walk, value, condition.type, &groups, LabelString(procedure, second_label), &last_of_ladder);
  EmitBodies(walk, statement, &groups);
  BasicBlock* before = procedure.current_bb;
  BasicBlock* end = StartBlock(walk, "end of the switch");
  ThreeAddress_AddBasicBlockPredecesor(before, end);
  CaptureLabel(walk, second_label);
  if (last_of_ladder != nullptr) AddJumpEdge(last_of_ladder, end);
  for (BasicBlock* from : procedure.jumps[statement].break_chain) AddJumpEdge(from, end);
}

}  // namespace vorc
