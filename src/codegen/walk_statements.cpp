#include <algorithm>
#include <charconv>

#include "base/format.h"
#include "base/host_stack.h"
#include "codegen/walk.h"
#include "program/initializer_walk.h"
#include "program/statement_tree.h"
#include "program/symtab.h"

namespace vorc {

namespace {

constexpr int kGotoError = 75;

using StatementWalk = void (*)(Walk& walk, const STATEMENT_BLOCK* statement);

// True if code would be made for a statement: only then an `if` is worth its compare.
bool has_valid_statements(const STATEMENT_BLOCK* statement) {
  if (statement == nullptr) return false;
  switch (statement->StatementType) {
    case STATEMENT_TYPE_CASE:
    case STATEMENT_TYPE_DEFAULT: return false;
    case STATEMENT_TYPE_PLAIN: return statement->Expression != nullptr || statement->Symbol != nullptr;
    case STATEMENT_TYPE_NEWBLOCK: break;
    default: return true;
  }
  if (statement->Block == nullptr) return false;
  for (const STATEMENT_BLOCK* at = statement->Block->Statements.First; at != nullptr; at = at->Next) {
    if (has_valid_statements(at)) return true;
  }
  return false;
}

Jumps& JumpsOf(Walk& walk, const STATEMENT_BLOCK* statement) {
  return walk.procedure.jumps[statement];
}

void MarkJumpEnd(BasicBlock* block) {
  block->fall_through_successor_next_basic_block_not_used_for_out_var_calc_because_of_absoulte_jump = true;
}

void MarkBehindJump(BasicBlock* block) {
  block->fall_through_successors_prev_basic_block_not_used_for_predecessor_calc_because_of_absoulte_jump =
      true;
}

// A jump in the middle of a list ends its block; what follows begins one of its own.
void JumpAway(Walk& walk, std::string_view target) {
  CaptureJump(walk, ASMOP_JMP, target);
  MarkJumpEnd(walk.procedure.current_bb);
  MarkBehindJump(StartBlock(walk, "New block right after JMP"));
}

// --- declarations with values

Operand SymbolPlace(const SYM_REC* symbol) {
  Operand place;
  place.kind = Operand::Kind::kSymbol;
  place.symbol = symbol;
  place.type = ValueType::OfSymbol(*symbol);
  return place;
}

Operand PlaceBehind(Walk& walk, int32_t base, const InitializerLeaf& leaf) {
  const int32_t address = walk.procedure.NewTemp();
  CaptureAddNumber(walk, address, base, leaf.offset);
  Operand place;
  place.kind = Operand::Kind::kPlace;
  place.temp = address;
  place.type = ValueType::OfSymbol(*leaf.symbol);
  while (place.type.IsArray()) place.type = place.type.Element();
  if (leaf.symbol->BitFieldWidth > 0) place.bit_field = leaf.symbol;
  return place;
}

void FillText(Walk& walk, int32_t base, const InitializerLeaf& leaf, std::string_view text) {
  const auto room = static_cast<size_t>(leaf.text_room);
  for (size_t i = 0; i < std::min(text.size(), room); ++i) {
    const int32_t address = walk.procedure.NewTemp();
    CaptureAddNumber(walk, address, base, leaf.offset + static_cast<int64_t>(i));
    const int32_t value = ValueInTemp(walk, NumberValue(static_cast<unsigned char>(text[i])));
    CaptureStore(walk, value, address, {1, true});
  }
}

void ClearBytes(Walk& walk, int32_t base, int64_t bytes) {
  const int32_t zero = walk.procedure.NewTemp();
  CaptureClear(walk, zero, "what an initializer leaves out is zero");
  int64_t at = 0;
  for (int chunk = walk.procedure.RegisterBytes(); chunk > 0; chunk /= 2) {
    for (; at + chunk <= bytes; at += chunk) {
      const int32_t address = walk.procedure.NewTemp();
      CaptureAddNumber(walk, address, base, at);
      CaptureStore(walk, zero, address, {chunk, true});
    }
  }
}

// A local array or struct with its list of values.
void FillLocal(Walk& walk, const SYM_REC* symbol) {
  if (symbol->Initializer.First == nullptr) return;
  const int32_t base = AddressOf(walk, SymbolPlace(symbol));
  ClearBytes(walk, base, ValueType::OfSymbol(*symbol).Size(walk.slot));
  const auto store = [&](const InitializerLeaf& leaf) {
    const Operand value = EvalExpression(walk, leaf.element->Expression);
    if (leaf.text_room > 0 && value.kind == Operand::Kind::kText)
      return FillText(walk, base, leaf, value.text);
    StoreInto(walk, PlaceBehind(walk, base, leaf), value);
  };
  InitializerWalk(walk.slot, store).Run(symbol);
}

// --- the statements

void ExecPlain(Walk& walk, const STATEMENT_BLOCK* statement) {
  if (statement->IsDelete) {
    WalkError(walk, 0, "'delete' needs a run-time library that compiled programs don't have.");
  } else if (statement->Expression != nullptr) {
    EvalExpression(walk, statement->Expression, false);
  } else if (statement->Symbol != nullptr) {
    FillLocal(walk, statement->Symbol);
  }
}

void ExecIf(Walk& walk, const STATEMENT_BLOCK* statement) {
  Procedure& procedure = walk.procedure;
  const IfParts parts = PartsOfIf(statement);
  const bool then_valid = has_valid_statements(parts.then_arm);
  const bool else_valid = has_valid_statements(parts.else_arm);
  if (!then_valid && !else_valid) {
    const std::string text(QuotedLine(walk.slot, statement->Line));
    CaptureComment(walk,
                   procedure.Keep(Format("//Source line:%08d :%s", statement->Line.Line, text.c_str())));
    CaptureComment(
        walk, procedure.Keep(Format("//line number %08d : 'if' statement has empty 'then' and  empty 'else' "
                                    "expressions. No code is generated",
                                    statement->Line.Line)));
    return;
  }
  const int32_t else_label = procedure.context.label_counter++;
  const int32_t end_label = procedure.context.label_counter++;
  const std::string_view to_else = LabelString(procedure, else_label);
  const std::string_view to_end = LabelString(procedure, end_label);
  CompareConditionWithZero(walk, statement->Expression,
                           "//evaluate the result of 'if' expression to be false");
  if (else_valid)
    CaptureJump(walk, ASMOP_JE, to_else, then_valid ? "   //if false then go the 'else' code" : "");
  else
    CaptureJump(walk, ASMOP_JE, to_end,
                "   //if false then go the 'else' code, but else has no valid code so jump to end of if");
  BasicBlock* head = procedure.current_bb;
  BasicBlock* then_block = StartBlock(walk, "New block right after JMP");
  ThreeAddress_AddBasicBlockPredecesor(head, then_block);
  if (then_valid) ExecStatement(walk, parts.then_arm);
  BasicBlock* then_end = procedure.current_bb;
  BasicBlock* else_end = nullptr;
  if (else_valid) {
    CaptureJump(walk, ASMOP_JMP, to_end);
    MarkJumpEnd(then_end);
    BasicBlock* else_block = StartBlock(
        walk, "New block  after the JMP  of the THEN statment and also begining of the ELSE statement");
    MarkBehindJump(else_block);
    AddJumpEdge(head, else_block);
    CaptureLabel(walk, else_label, "'else' of the 'if' statement");
    ExecStatement(walk, parts.else_arm);
    else_end = procedure.current_bb;
  }
  BasicBlock* end = StartBlock(walk, "end of the 'if' statement");
  if (else_valid) {
    AddJumpEdge(then_end, end);
    ThreeAddress_AddBasicBlockPredecesor(else_end, end);
  } else {
    ThreeAddress_AddBasicBlockPredecesor(then_end, end);
    AddJumpEdge(head, end);
  }
  CaptureLabel(walk, end_label);
}

// Ends a loop or switch: every block that broke out of it goes on here.
BasicBlock* FinishLoop(Walk& walk, const STATEMENT_BLOCK* statement, int32_t label, std::string_view reason) {
  BasicBlock* end = StartBlock(walk, reason);
  CaptureLabel(walk, label);
  for (BasicBlock* from : JumpsOf(walk, statement).break_chain) AddJumpEdge(from, end);
  return end;
}

void ExecWhileStatement(Walk& walk, const STATEMENT_BLOCK* statement) {
  Procedure& procedure = walk.procedure;
  const int32_t first_label = procedure.context.label_counter++;
  const int32_t second_label = procedure.context.label_counter++;
  JumpsOf(walk, statement) = {second_label, first_label, {}, {}};
  BasicBlock* before = procedure.current_bb;
  BasicBlock* head = StartBlock(walk, "Begining while condition expression, a jump will come here");
  ThreeAddress_AddBasicBlockPredecesor(before, head);
  CaptureLabel(walk, first_label);
  CompareConditionWithZero(walk, statement->Expression, {});
  CaptureJump(walk, ASMOP_JE, LabelString(procedure, second_label));
  BasicBlock* condition_end = procedure.current_bb;
  BasicBlock* body = StartBlock(walk, "body of the while loop");
  ThreeAddress_AddBasicBlockPredecesor(condition_end, body);
  ExecStatement(walk, BodyOfLoop(statement));
  CaptureJump(walk, ASMOP_JMP, LabelString(procedure, first_label));
  BasicBlock* body_end = procedure.current_bb;
  MarkJumpEnd(body_end);
  AddJumpEdge(body_end, head);
  for (BasicBlock* from : JumpsOf(walk, statement).continue_chain) AddJumpEdge(from, head);
  BasicBlock* end = FinishLoop(walk, statement, second_label, "end of the while loop");
  MarkBehindJump(end);
  AddJumpEdge(condition_end, end);
}

void ExecDoStatement(Walk& walk, const STATEMENT_BLOCK* statement) {
  Procedure& procedure = walk.procedure;
  const int32_t first_label = procedure.context.label_counter++;
  const int32_t second_label = procedure.context.label_counter++;
  const int32_t third_label = procedure.context.label_counter++;
  JumpsOf(walk, statement) = {third_label, second_label, {}, {}};
  BasicBlock* before = procedure.current_bb;
  BasicBlock* head = StartBlock(walk,
                                "New Block for DO while at the begining of the statement, because CONTINUE "
                                "statment will jump here");
  ThreeAddress_AddBasicBlockPredecesor(before, head);
  CaptureLabel(walk, first_label);
  ExecStatement(walk, BodyOfLoop(statement));
  // A `continue` comes in here: with a label in its middle a block's registers would be unknown.
  if (!JumpsOf(walk, statement).continue_chain.empty()) {
    BasicBlock* body_end = procedure.current_bb;
    BasicBlock* target = StartBlock(walk, "condition of the do loop, CONTINUE jumps here");
    ThreeAddress_AddBasicBlockPredecesor(body_end, target);
    for (BasicBlock* from : JumpsOf(walk, statement).continue_chain) AddJumpEdge(from, target);
  }
  CaptureLabel(walk, second_label);
  CompareConditionWithZero(walk, statement->Expression, {});
  CaptureJump(walk, ASMOP_JNE, LabelString(procedure, first_label));
  BasicBlock* condition_end = procedure.current_bb;
  AddJumpEdge(condition_end, head);
  BasicBlock* end = FinishLoop(walk, statement, third_label,
                               "New Block after DO while condition jump and break target , because CONTINUE "
                               "statment will jump here");
  ThreeAddress_AddBasicBlockPredecesor(condition_end, end);
}

void ExecForClause(Walk& walk, const STATEMENT_BLOCK* first) {
  for (const STATEMENT_BLOCK* at = first; at != nullptr; at = at->Next) ExecPlain(walk, at);
}

void ExecForStatement(Walk& walk, const STATEMENT_BLOCK* statement) {
  Procedure& procedure = walk.procedure;
  const ForParts parts = PartsOfFor(statement);
  const int32_t first_label = procedure.context.label_counter++;
  const int32_t second_label = procedure.context.label_counter++;
  const int32_t third_label = procedure.context.label_counter++;
  JumpsOf(walk, statement) = {third_label, second_label, {}, {}};
  ExecForClause(walk, parts.first);
  BasicBlock* before = procedure.current_bb;
  BasicBlock* head = StartBlock(walk, "before the second clause of the FOR loop");
  ThreeAddress_AddBasicBlockPredecesor(before, head);
  CaptureLabel(walk, first_label);
  BasicBlock* condition_end = nullptr;
  for (const STATEMENT_BLOCK* at = parts.conditions; at != nullptr; at = at->Next) {
    if (at->Next != nullptr) {
      EvalExpression(walk, at->Expression, false);
      continue;
    }
    CompareConditionWithZero(walk, at->Expression, {});
    CaptureJump(walk, ASMOP_JE, LabelString(procedure, third_label),
                "This after the FOR second clause evaluation. If False then Jump the end of For Loop");
    condition_end = procedure.current_bb;
  }
  BasicBlock* body = StartBlock(walk, "body of the FOR loop");
  ThreeAddress_AddBasicBlockPredecesor(condition_end == nullptr ? head : condition_end, body);
  ExecStatement(walk, parts.body);
  BasicBlock* body_end = procedure.current_bb;
  const std::vector<BasicBlock*> continued = JumpsOf(walk, statement).continue_chain;
  if (!continued.empty()) {
    BasicBlock* steps = StartBlock(walk, "third clause of the FOR loop, CONTINUE jumps here");
    ThreeAddress_AddBasicBlockPredecesor(body_end, steps);
    for (BasicBlock* from : continued) AddJumpEdge(from, steps);
    CaptureLabel(walk, second_label);
  }
  ExecForClause(walk, parts.steps);
  CaptureJump(walk, ASMOP_JMP, LabelString(procedure, first_label));
  BasicBlock* steps_end = procedure.current_bb;
  MarkJumpEnd(steps_end);
  AddJumpEdge(steps_end, head);
  BasicBlock* end =
      FinishLoop(walk, statement, third_label,
                 "This after the FOR body. If 2nd clause of FOR is False then Jump the end of For Loop");
  MarkBehindJump(end);
  if (condition_end != nullptr) AddJumpEdge(condition_end, end);
}

void ExecNewBlock(Walk& walk, const STATEMENT_BLOCK* statement) {
  if (statement->Block == nullptr) return;
  bool returned = false;
  for (const STATEMENT_BLOCK* at = statement->Block->Statements.First; at != nullptr; at = at->Next) {
    if (returned) {
      walk.slot.WarningAt(
          at->Line, Format("Code has no effect in function '%s'", std::string(walk.procedure.name).c_str()));
    }
    returned |= at->StatementType == STATEMENT_TYPE_RETURN;
    ExecStatement(walk, at);
  }
}

void ExecBreakStatement(Walk& walk, const STATEMENT_BLOCK* statement) {
  const STATEMENT_BLOCK* target = FindLoopSwitchStatement(statement);
  if (target == nullptr) return;
  Jumps& jumps = JumpsOf(walk, target);
  jumps.break_chain.push_back(walk.procedure.current_bb);
  JumpAway(walk, LabelString(walk.procedure, jumps.break_target));
}

void ExecContinueStatement(Walk& walk, const STATEMENT_BLOCK* statement) {
  const STATEMENT_BLOCK* target = FindLoopStatement(statement);
  if (target == nullptr) return;
  Jumps& jumps = JumpsOf(walk, target);
  jumps.continue_chain.push_back(walk.procedure.current_bb);
  JumpAway(walk, LabelString(walk.procedure, jumps.continue_target));
}

void ExecReturnStatement(Walk& walk, const STATEMENT_BLOCK* statement) {
  Procedure& procedure = walk.procedure;
  if (statement->Expression != nullptr) {
    const ValueType type = ValueType::OfType(procedure.proto->ReturnType);
    const Operand value = EvalExpression(walk, statement->Expression);
    const bool is_void = type.basic == Tok::void_ && type.depth == 0;
    const Operand converted = is_void || type.IsStruct() ? value : Converted(walk, value, type);
    if (type.IsStruct()) {
      WalkError(walk, 0,
                Format("Function '%s' gives a whole struct back, which compiled code can't do: hand over a "
                       "pointer.",
                       std::string(procedure.name).c_str()));
    }
    const TacOperand result = ValueOf(walk, converted, kForReturn);
    if (!result.IsVariable()) {
      std::string_view number = result.text;
      if (converted.IsNumber()) number = NumberOperand(procedure, converted.number).text;
      const bool real = converted.kind == Operand::Kind::kReal;
      const std::string mnemonic = real ? "LOADIMMED" : "LOADIMM" + std::to_string(walk.mnemonics.cpu_bytes);
      Instruction& load = CaptureAssembly(
          walk, ASMOP_PLAIN_TEXT,
          procedure.Keep(Format("/*%06d:*/%s return_reg , %s ", walk.line.Line, mnemonic.c_str(),
                                vorc_imm_for_target(walk.slot.Target, number).c_str())));
      load.sets_return_reg = true;
      std::from_chars(number.data(), number.data() + number.size(), load.number);
    } else {
      CaptureMoveVarToReg(walk, "return_reg", result, walk.mnemonics.alu_move);
    }
    procedure.last->is_wide = IsWideNumber(walk, type);
  }
  procedure.return_jump_chain.push_back(procedure.current_bb);
  JumpAway(walk, Compose(procedure, procedure.name, "_return"));
}

// --- labels

bool IsLabelWanted(const Procedure& procedure, const Name* label) {
  if (procedure.goto_labels.contains(label)) return true;
  // A text of assembly may jump to a label as well.
  return std::any_of(procedure.asm_texts.begin(), procedure.asm_texts.end(),
                     [&](std::string_view text) { return text.find(label->Text) != std::string_view::npos; });
}

// The assembler would take a label for the function or variable of the same name.
std::string_view AsmLabel(Walk& walk, const Name* label) {
  if (!FindInScope(walk.slot, &walk.slot.Globals, label)) return label->Text;
  return Compose(walk.procedure, label->Text, "_label");
}

LabelGroup* GroupOf(Procedure& procedure, const STATEMENT_BLOCK* label) {
  for (LabelGroup& group : procedure.label_groups) {
    if (std::find(group.labels.begin(), group.labels.end(), label) != group.labels.end()) return &group;
  }
  procedure.label_groups.push_back({{label}, nullptr});
  return &procedure.label_groups.back();
}

BasicBlock* FindGotoLabelbb(Procedure& procedure, const STATEMENT_BLOCK* label) {
  for (const LabelGroup& group : procedure.label_groups) {
    if (std::find(group.labels.begin(), group.labels.end(), label) != group.labels.end()) return group.block;
  }
  return nullptr;
}

void ExecGoto(Walk& walk, const STATEMENT_BLOCK* statement) {
  Procedure& procedure = walk.procedure;
  const STATEMENT_BLOCK* label = FindLabel(procedure.proto->ProcBody, statement->GotoLabel);
  if (label == nullptr) {
    WalkError(walk, kGotoError, Format("goto: target label not found '%s'.", statement->GotoLabel->c_str()));
    return;
  }
  if (BasicBlock* target = FindGotoLabelbb(procedure, label))
    AddJumpEdge(procedure.current_bb, target);
  else
    procedure.forward_goto_chain.push_back({statement->GotoLabel, procedure.current_bb});
  JumpAway(walk, AsmLabel(walk, statement->GotoLabel));
}

void ExecLabel(Walk& walk, const STATEMENT_BLOCK* statement) {
  Procedure& procedure = walk.procedure;
  const Name* name = statement->Symbol->name;
  if (!IsLabelWanted(procedure, name)) {
    const std::string text(QuotedLine(walk.slot, statement->Line));
    CaptureComment(walk,
                   procedure.Keep(Format("//Source line:%08d :%s", statement->Line.Line, text.c_str())));
    CaptureComment(walk,
                   procedure.Keep(Format("//line number %08d : Label '%s' has no 'goto' found. Statement is "
                                         "exculded from the code generation",
                                         statement->Line.Line, name->c_str())));
    return;
  }
  LabelGroup* group = GroupOf(procedure, statement);
  if (group->block != nullptr) {
    procedure.log().Write("->ExecLabel: consecutive label '", name->Text, "'  no new basic block created \n");
  } else {
    BasicBlock* before = procedure.current_bb;
    BasicBlock* block = StartBlock(walk, "label of a goto");
    ThreeAddress_AddBasicBlockPredecesor(before, block);
    group->block = block;
  }
  const std::string_view label = AsmLabel(walk, name);
  CaptureAssembly(walk, ASMOP_GOTO_LABEL, Compose(procedure, label, ":")).label = label;
}

StatementWalk WalkOf(StatementKind kind) {
  switch (kind) {
    case STATEMENT_TYPE_PLAIN: return ExecPlain;
    case STATEMENT_TYPE_RETURN: return ExecReturnStatement;
    case STATEMENT_TYPE_GOTO: return ExecGoto;
    case STATEMENT_TYPE_IF: return ExecIf;
    case STATEMENT_TYPE_NEWBLOCK: return ExecNewBlock;
    case STATEMENT_TYPE_LABEL: return ExecLabel;
    case STATEMENT_TYPE_WHILE: return ExecWhileStatement;
    case STATEMENT_TYPE_DO: return ExecDoStatement;
    case STATEMENT_TYPE_FOR: return ExecForStatement;
    case STATEMENT_TYPE_SWITCH: return ExecSwitchStatement;
    case STATEMENT_TYPE_BREAK: return ExecBreakStatement;
    case STATEMENT_TYPE_CONTINUE: return ExecContinueStatement;
    default: return nullptr;
  }
}

void CollectGotos(Procedure& procedure, const StatementList& list);

void CollectGotosIn(Procedure& procedure, const STATEMENT_BLOCK* statement) {
  if (statement->StatementType == STATEMENT_TYPE_GOTO) procedure.goto_labels.insert(statement->GotoLabel);
  CollectGotos(procedure, statement->ChildStatements);
  if (statement->Block != nullptr) CollectGotos(procedure, statement->Block->Statements);
  for (const EXPR_NODE* node = statement->Expression; node != nullptr; node = node->Next) {
    const bool assembly = node->name != nullptr && node->name->Text == "_asm";
    const EXPR_NODE* arguments =
        node->HasCall && node->Next != nullptr ? node->Next->Arguments : node->Arguments;
    if (assembly && arguments != nullptr && arguments->Token == Tok::STRING)
      procedure.asm_texts.push_back(arguments->Text());
  }
}

void CollectGotos(Procedure& procedure, const StatementList& list) {
  for (const STATEMENT_BLOCK* at = list.First; at != nullptr; at = at->Next) CollectGotosIn(procedure, at);
}

}  // namespace

void create_consecutive_label_group(Procedure& procedure) {
  const PROC_TABLE* body = procedure.proto->ProcBody;
  CollectGotos(procedure, body->Statements);
  const STATEMENT_BLOCK* before = nullptr;
  for (const STATEMENT_BLOCK* at = body->Statements.First; at != nullptr; at = at->Next) {
    if (at->StatementType == STATEMENT_TYPE_LABEL) {
      if (before == nullptr || before->StatementType != STATEMENT_TYPE_LABEL)
        procedure.label_groups.push_back({});
      procedure.label_groups.back().labels.push_back(at);
    }
    before = at;
  }
  for (const LabelGroup& group : procedure.label_groups) {
    procedure.log().Write("label group {");
    for (const STATEMENT_BLOCK* label : group.labels) procedure.log().Write(label->Symbol->name->Text, ", ");
    procedure.log().Write("}\n");
  }
}

void ExecStatement(Walk& walk, const STATEMENT_BLOCK* statement) {
  if (statement == nullptr || walk.procedure.too_deep) return;
  const StatementWalk exec = WalkOf(statement->StatementType);
  if (exec == nullptr) return;
  if (HostStackLow()) {
    walk.procedure.too_deep = true;
    WalkError(walk, 0, "The program nests too deep.");
    return;
  }
  if (statement->StatementType != STATEMENT_TYPE_NEWBLOCK) AddSourceLineToFtac(walk, statement->Line);
  exec(walk, statement);
}

}  // namespace vorc
