#include <algorithm>

#include "interp/interpreter.h"
#include "interp/vm_compiler.h"
#include "program/statement_tree.h"

namespace vorc {

namespace {

constexpr unsigned Bit(unsigned state) {
  return 1U << state;
}
constexpr unsigned kAnyState = Bit(kBreak) | Bit(kExit) | Bit(kReturn) | Bit(kContinue);
constexpr unsigned kEndsLoop = Bit(kBreak) | Bit(kExit) | Bit(kReturn);
constexpr unsigned kEndsFunction = Bit(kExit) | Bit(kReturn);
// A table may be this many times as long as it has cases.
constexpr int64_t kSparsest = 4;
constexpr int64_t kSmallTable = 64;

bool IsBlock(const STATEMENT_BLOCK* statement) {
  return statement->StatementType == STATEMENT_TYPE_NEWBLOCK;
}

}  // namespace

void VmCompiler::CompileBody(bool entry) {
  const STATEMENT_BLOCK* first = code_.function->ProcBody->Statements.First;
  fixed_stack_ = entry || code_.function->ParameterCount > 0 || code_.function->HasVarArgs;
  states_.Run(first);
  leave_ = NewLabel();
  for (const STATEMENT_BLOCK* at = first; at != nullptr; at = at->Next) {
    if (entry) SetState(at, kNone);
    StatementOf(const_cast<STATEMENT_BLOCK*>(at));
    IfState(at, kEndsFunction, leave_);
  }
  Bind(leave_);
  Emit(VmOp::kLeave);
  Finish();
}

void VmCompiler::CompileStatement(STATEMENT_BLOCK* statement) {
  fixed_stack_ = true;
  states_.RunOne(statement);
  leave_ = NewLabel();
  StatementOf(statement);
  Bind(leave_);
  Emit(VmOp::kLeave);
  Finish();
}

void VmCompiler::StatementOf(STATEMENT_BLOCK* statement) {
  switch (statement->StatementType) {
    case STATEMENT_TYPE_PLAIN: return Plain(statement);
    case STATEMENT_TYPE_RETURN: return Return(statement);
    case STATEMENT_TYPE_GOTO: return General(VmOp::kStatement, 0, nullptr, statement);
    case STATEMENT_TYPE_IF: return If(statement);
    case STATEMENT_TYPE_NEWBLOCK: return Block(statement);
    case STATEMENT_TYPE_WHILE: return While(statement);
    case STATEMENT_TYPE_DO: return Do(statement);
    case STATEMENT_TYPE_FOR: return For(statement);
    case STATEMENT_TYPE_SWITCH: return Switch(statement);
    case STATEMENT_TYPE_BREAK:
    case STATEMENT_TYPE_CONTINUE: return Break(statement);
    default: return;
  }
}

void VmCompiler::SetState(const STATEMENT_BLOCK* statement, uint8_t state) {
  if (Kept(statement)) Emit(VmOp::kSetState, 0, static_cast<int32_t>(statement->Index), 0, state);
}

void VmCompiler::SetStates(const STATEMENT_BLOCK* from, const STATEMENT_BLOCK* target, uint8_t state) {
  for (const STATEMENT_BLOCK* at = from; at != nullptr; at = Enclosing(at)) {
    SetState(at, state);
    if (at == target) return;
  }
}

void VmCompiler::IfState(const STATEMENT_BLOCK* statement, unsigned mask, Label target) {
  if (!Kept(statement)) return;
  EmitJump(VmOp::kJumpState, 0, static_cast<int32_t>(statement->Index), target, static_cast<int>(mask));
}

void VmCompiler::General(VmOp op, int32_t a, Code* code, const STATEMENT_BLOCK* statement) {
  int number = 0;
  Site& site = NewSite(&number);
  site.code = code;
  site.statement = const_cast<STATEMENT_BLOCK*>(statement);
  Emit(op, a, 0, 0, number);
}

void VmCompiler::Plain(const STATEMENT_BLOCK* statement) {
  if (statement->Expression == nullptr) {
    if (statement->Symbol != nullptr && statement->Symbol->Initializer.First != nullptr)
      General(VmOp::kStatement, 0, nullptr, statement);
    return;
  }
  if (!statement->IsDelete) DropOrGeneral(host_.decoder_.Decode(statement->Expression), statement);
}

void VmCompiler::If(STATEMENT_BLOCK* statement) {
  STATEMENT_BLOCK* then = statement->ChildStatements.First;
  if (then == nullptr) return;
  SetState(statement, kNone);
  const Label otherwise = NewLabel();
  Condition(host_.decoder_.Decode(statement->Expression), statement, otherwise, false);
  StatementOf(then);
  if (then->Next != nullptr) {
    const Label end = NewLabel();
    EmitJump(VmOp::kJump, 0, 0, end);
    Bind(otherwise);
    StatementOf(then->Next);
    Bind(end);
  } else {
    Bind(otherwise);
  }
}

void VmCompiler::While(STATEMENT_BLOCK* statement) {
  STATEMENT_BLOCK* body = statement->ChildStatements.First;
  Code* condition = host_.decoder_.Decode(statement->Expression);
  const Label out = NewLabel();
  const Label top = NewLabel();
  const Label again = NewLabel();
  breaks_[statement] = out;
  continues_[statement] = again;
  SetState(statement, kNone);
  Condition(condition, statement, out, false);
  Bind(top);
  StatementOf(body);
  if (Kept(statement)) {
    IfState(statement, Bit(kExit) | Bit(kReturn), out);
    const Label goes_on = NewLabel();
    IfState(statement, Bit(kContinue) | Bit(kNone), goes_on);
    SetState(statement, kNone);
    EmitJump(VmOp::kJump, 0, 0, out);
    Bind(goes_on);
  }
  Bind(again);
  SetState(statement, kNone);
  Condition(condition, statement, top, true);
  Bind(out);
}

void VmCompiler::Do(STATEMENT_BLOCK* statement) {
  const Label out = NewLabel();
  const Label top = NewLabel();
  const Label again = NewLabel();
  breaks_[statement] = out;
  continues_[statement] = again;
  Bind(top);
  SetState(statement, kNone);
  StatementOf(statement->ChildStatements.First);
  IfState(statement, kEndsLoop, out);
  Bind(again);
  Condition(host_.decoder_.Decode(statement->Expression), statement, top, true);
  Bind(out);
}

void VmCompiler::Clauses(const STATEMENT_BLOCK* first) {
  for (const STATEMENT_BLOCK* at = first; at != nullptr; at = at->Next) {
    if (at->Symbol != nullptr && at->Expression == nullptr)
      Plain(at);
    else if (at->Expression != nullptr)
      DropOrGeneral(host_.decoder_.Decode(at->Expression), at);
  }
}

// Every clause is evaluated; the loop goes on if one of them held.
void VmCompiler::Conditions(const STATEMENT_BLOCK* first, Label body, Label out, bool body_follows) {
  if (first->Next == nullptr && (first->Expression != nullptr)) {
    Code* code = host_.decoder_.Decode(first->Expression);
    return body_follows ? Condition(code, first, out, false) : Condition(code, first, body, true);
  }
  const int32_t any = NewTemp();
  Emit(VmOp::kConstInt, any);
  for (const STATEMENT_BLOCK* at = first; at != nullptr; at = at->Next) {
    if (at->Expression == nullptr) {
      Plain(at);
      continue;
    }
    Item held;
    held.where = Item::Where::kValue;
    held.place = any;
    items_.push_back(held);
    const Label holds_not = NewLabel();
    Condition(host_.decoder_.Decode(at->Expression), at, holds_not, false);
    Emit(VmOp::kConstInt, any, 0, 1);
    Bind(holds_not);
    items_.pop_back();
  }
  if (body_follows)
    EmitJump(VmOp::kJumpEqImm, any, 0, out);
  else
    EmitJump(VmOp::kJumpNeImm, any, 0, body);
  ReleaseTemps();
}

void VmCompiler::For(STATEMENT_BLOCK* statement) {
  const ForParts parts = PartsOfFor(statement);
  if (parts.first != nullptr) Clauses(parts.first);
  if (parts.conditions == nullptr) return;
  const Label out = NewLabel();
  const Label top = NewLabel();
  const Label again = NewLabel();
  breaks_[statement] = out;
  continues_[statement] = again;
  Conditions(parts.conditions, top, out, true);
  Bind(top);
  StatementOf(parts.body);
  IfState(parts.body, kEndsLoop, out);
  Bind(again);
  Clauses(parts.steps);
  Conditions(parts.conditions, top, out, false);
  Bind(out);
}

void VmCompiler::Switch(STATEMENT_BLOCK* statement) {
  const size_t number = code_.tables.size();
  code_.tables.emplace_back();
  const int32_t value = NewTemp();
  Item held;
  held.where = Item::Where::kValue;
  held.place = value;
  items_.push_back(held);
  Code* control = host_.decoder_.Decode(statement->Expression);
  const Mark mark = Here();
  int32_t from = kNoPlace;
  if (Root(control, Use::kLow) && items_.back().where != Item::Where::kNowhere && !items_.back().is_real) {
    const Item item = Pop();
    from = IntPlace(item);
    if (from != kNoPlace && fails_) {
      // The general road leaves its value in the same place.
      Emit(VmOp::kMoveInt, value, from);
      from = value;
    }
  }
  if (from == kNoPlace) {
    Back(mark);
    General(VmOp::kGeneralLow, value, control, statement);
    from = value;
  } else {
    EndPlainRoot(VmOp::kGeneralLow, value, control, statement);
  }
  items_.pop_back();
  SetState(statement, kNone);
  Emit(VmOp::kSwitch, from, 0, static_cast<int32_t>(number));
  ReleaseTemps();
  const Label out = NewLabel();
  breaks_[statement] = out;
  std::unordered_map<int32_t, Label> cases;
  Label otherwise = out;
  for (STATEMENT_BLOCK* at = statement->Block->Statements.First; at != nullptr; at = at->Next) {
    const Label here = NewLabel();
    if (at->StatementType == STATEMENT_TYPE_CASE) {
      Bind(here);
      cases.emplace(static_cast<int32_t>(at->CaseValue), here);
    } else if (at->StatementType == STATEMENT_TYPE_DEFAULT) {
      Bind(here);
      otherwise = here;
    }
    StatementOf(at);
    // Only what can change the state is looked at.
    if (Kept(statement) && (states_.Of(at).set || states_.Of(at).comes_back)) {
      const Label goes_on = NewLabel();
      IfState(statement, Bit(kNone), goes_on);
      IfState(statement, kAnyState ^ Bit(kBreak), out);
      SetState(statement, kNone);
      EmitJump(VmOp::kJump, 0, 0, out);
      Bind(goes_on);
    }
  }
  Bind(out);
  SwitchTable& table = code_.tables[number];
  table.otherwise = otherwise;
  int64_t lowest = INT64_MAX;
  int64_t highest = INT64_MIN;
  for (const auto& entry : cases) {
    lowest = std::min<int64_t>(lowest, entry.first);
    highest = std::max<int64_t>(highest, entry.first);
  }
  const auto count = static_cast<int64_t>(cases.size());
  if (count > 0 && highest - lowest <= count * kSparsest + kSmallTable) {
    table.lowest = lowest;
    table.dense.assign(static_cast<size_t>(highest - lowest + 1), otherwise);
    for (const auto& entry : cases) table.dense[static_cast<size_t>(entry.first - lowest)] = entry.second;
  } else {
    table.sparse = cases;
  }
}

void VmCompiler::Block(STATEMENT_BLOCK* statement) {
  if (statement->Block == nullptr) return;
  const Label end = NewLabel();
  for (STATEMENT_BLOCK* at = statement->Block->Statements.First; at != nullptr; at = at->Next) {
    SetState(at, kNone);
    const Label outer = block_end_;
    block_end_ = end;
    StatementOf(at);
    block_end_ = outer;
    IfState(at, kAnyState, end);
  }
  Bind(end);
}

// `break` and `continue`: all that lies between them and their target has nothing left to do.
void VmCompiler::Break(STATEMENT_BLOCK* statement) {
  const bool breaks = statement->StatementType == STATEMENT_TYPE_BREAK;
  STATEMENT_BLOCK* target = breaks ? FindLoopSwitchStatement(statement) : FindLoopStatement(statement);
  if (target == nullptr) return EmitJump(VmOp::kJump, 0, 0, leave_);
  SetStates(statement, target, breaks ? kBreak : kContinue);
  const bool clears =
      target->StatementType == STATEMENT_TYPE_WHILE || target->StatementType == STATEMENT_TYPE_SWITCH;
  if (breaks && clears) SetState(target, kNone);
  EmitJump(VmOp::kJump, 0, 0, breaks ? breaks_.at(target) : continues_.at(target));
}

void VmCompiler::Return(STATEMENT_BLOCK* statement) {
  SetStates(statement, nullptr, kReturn);
  if (!states_.Of(statement).comes_back) {
    return ReturnValue(statement, true);
  }
  // A call may have changed the states around this statement, which decide where the run goes on.
  bool kept_above = false;
  for (const STATEMENT_BLOCK* at = Enclosing(statement); at != nullptr; at = Enclosing(at))
    kept_above |= Kept(at);
  ReturnValue(statement, !kept_above);
  if (!kept_above) return;
  const STATEMENT_BLOCK* around = Enclosing(statement);
  const bool in_block = statement->ParentStatement == nullptr && IsBlock(around);
  // The statement's own state is still what it set.
  if (in_block) EmitJump(VmOp::kJump, 0, 0, block_end_);
}

bool VmCompiler::ReturnItem(const Item& item, bool leaves) {
  const TypeSpec& declared = code_.function->ReturnType;
  const Tok type = declared.BasicType;
  if (type == Tok::float_) return false;
  const bool keeps =
      type == Tok::void_ || type == Tok::dollar || (type == Tok::char_ && declared.PointerDepth > 0);
  if (type == Tok::double_ || (item.is_real && keeps)) {
    if (item.IsVariable() && !item.is_real && (item.typeless || item.kind == 3)) return false;
    const int32_t from = RealPlace(item);
    if (from != kNoPlace) Emit(leaves ? VmOp::kReturnReal : VmOp::kResultReal, from);
    return from != kNoPlace;
  }
  if (item.where == Item::Where::kNumber && leaves) {
    Emit(VmOp::kReturnImm, 0, 0, static_cast<int32_t>(item.number));
    return true;
  }
  const int32_t from = WholePlace(item);
  if (from != kNoPlace) Emit(leaves ? VmOp::kReturnInt : VmOp::kResultInt, from);
  return from != kNoPlace;
}

void VmCompiler::ReturnValue(STATEMENT_BLOCK* statement, bool leaves) {
  if (statement->Expression == nullptr) {
    Emit(leaves ? VmOp::kReturnNothing : VmOp::kResultNothing);
    return;
  }
  Code* code = host_.decoder_.Decode(statement->Expression);
  const Mark mark = Here();
  if (Root(code, Use::kSettled) && ReturnItem(Pop(), leaves)) {
    ReleaseTemps();
    if (!fails_) return;
    EndPlainRoot(VmOp::kGeneralReturn, 0, code, statement);
    roads_.back().leaves = leaves;
    return;
  }
  Back(mark);
  General(VmOp::kGeneralReturn, 0, code, statement);
  if (leaves) Emit(VmOp::kLeave);
}

}  // namespace vorc
