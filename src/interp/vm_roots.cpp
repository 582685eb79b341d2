#include "interp/interpreter.h"
#include "interp/vm_compiler.h"

namespace vorc {

namespace {

constexpr size_t kLargestNumber16 = 32'767;

struct JumpForm {
  Tok token;
  VmOp jump;   ///< if it holds
  VmOp other;  ///< if it doesn't
  VmOp immediate;
  VmOp other_immediate;
  VmOp real;
  VmOp other_real;
  bool swapped;  ///< for registers and doubles: right before left
};
constexpr JumpForm kJumpForms[] = {
    {Tok::LT, VmOp::kJumpLt, VmOp::kJumpLe, VmOp::kJumpLtImm, VmOp::kJumpGeImm, VmOp::kJumpLtReal,
     VmOp::kJumpNotLtReal, false},
    {Tok::LE, VmOp::kJumpLe, VmOp::kJumpLt, VmOp::kJumpLeImm, VmOp::kJumpGtImm, VmOp::kJumpLeReal,
     VmOp::kJumpNotLeReal, false},
    {Tok::GT, VmOp::kJumpLt, VmOp::kJumpLe, VmOp::kJumpGtImm, VmOp::kJumpLeImm, VmOp::kJumpLtReal,
     VmOp::kJumpNotLtReal, true},
    {Tok::GE, VmOp::kJumpLe, VmOp::kJumpLt, VmOp::kJumpGeImm, VmOp::kJumpLtImm, VmOp::kJumpLeReal,
     VmOp::kJumpNotLeReal, true},
    {Tok::EQ, VmOp::kJumpEq, VmOp::kJumpNe, VmOp::kJumpEqImm, VmOp::kJumpNeImm, VmOp::kJumpEqReal,
     VmOp::kJumpNeReal, false},
    {Tok::NE, VmOp::kJumpNe, VmOp::kJumpEq, VmOp::kJumpNeImm, VmOp::kJumpEqImm, VmOp::kJumpNeReal,
     VmOp::kJumpEqReal, false},
};

Tok Mirrored(Tok token) {
  switch (token) {
    case Tok::LT: return Tok::GT;
    case Tok::GT: return Tok::LT;
    case Tok::LE: return Tok::GE;
    case Tok::GE: return Tok::LE;
    default: return token;
  }
}

bool IsEffect(OpCode code) {
  return code == OpCode::kAssign || code == OpCode::kCompoundAssign || code == OpCode::kStepBefore ||
         code == OpCode::kStepAfter;
}

bool IsCall(OpCode code) {
  return code == OpCode::kUserCall || code == OpCode::kNameCall || code == OpCode::kValueCall ||
         code == OpCode::kMemberCall;
}

// The integer loop jump that adds first, or none.
VmOp LoopForm(VmOp jump) {
  switch (jump) {
    case VmOp::kJumpLt: return VmOp::kLoopLt;
    case VmOp::kJumpLe: return VmOp::kLoopLe;
    case VmOp::kJumpLtImm: return VmOp::kLoopLtImm;
    case VmOp::kJumpLeImm: return VmOp::kLoopLeImm;
    default: return VmOp::kJump;
  }
}

}  // namespace

// How many assignments and steps there are, but for one that ends the whole expression.
int VmCompiler::CountEffects(const Code* code, bool root, bool* calls) {
  if (code == nullptr) return 0;
  int count = 0;
  for (int i = 0; i < code->count; ++i) {
    const Op& op = code->ops[i];
    if (IsEffect(op.code) && !(root && op.last)) ++count;
    *calls |= IsCall(op.code) || op.code == OpCode::kNew;
    count += CountEffects(op.sub, false, calls) + CountEffects(op.other, false, calls);
    const int listed = op.argument_count > op.index_count ? op.argument_count : op.index_count;
    if (IsCall(op.code)) continue;
    for (int k = 0; op.list != nullptr && k < listed; ++k) count += CountEffects(op.list[k], false, calls);
  }
  return count;
}

// True if a function of the script may run, and not just built-ins.
bool VmCompiler::CallsFunction(const Code* code) {
  for (int i = 0; code != nullptr && i < code->count; ++i) {
    const Op& op = code->ops[i];
    const bool builtin = op.code == OpCode::kNameCall && op.symbol == nullptr && op.builtin != nullptr;
    if (op.code == OpCode::kNew || (IsCall(op.code) && !builtin) || op.indices != nullptr) return true;
    if (CallsFunction(op.sub) || CallsFunction(op.other)) return true;
    const int listed = op.argument_count > op.index_count ? op.argument_count : op.index_count;
    for (int k = 0; op.list != nullptr && k < listed; ++k) {
      if (CallsFunction(op.list[k])) return true;
    }
  }
  return false;
}

bool VmCompiler::Root(Code* code, Use use) {
  StartRoot(code);
  dropped_ = use == Use::kDropped;
  return code != nullptr && Level(*code, false) && (dropped_ || Numeric(items_.back()));
}

void VmCompiler::StartRoot(const Code* code) {
  bool calls = false;
  const int effects = CountEffects(code, true, &calls);
  order_ = calls || effects > 0 ? Order::kOrdered : Order::kPlain;
  fail_ = order_ == Order::kPlain ? NewLabel() : kNoLabel;
  fails_ = dropped_ = false;
  depth_ = 0;
  guarded_.clear();
  level_base_ = items_.size();
}

void VmCompiler::EndPlainRoot(VmOp road, int32_t a, Code* code, const STATEMENT_BLOCK* statement) {
  if (!fails_) return;
  const Label back = NewLabel();
  Bind(back);
  roads_.push_back({fail_, back, road, a, code, statement});
}

bool VmCompiler::Drop(Code* code) {
  const Mark mark = Here();
  if (Root(code, Use::kDropped)) {
    items_.pop_back();
    ReleaseTemps();
    return true;
  }
  Back(mark);
  return false;
}

void VmCompiler::DropOrGeneral(Code* code, const STATEMENT_BLOCK* statement) {
  if (Drop(code))
    EndPlainRoot(VmOp::kGeneral, 0, code, statement);
  else
    General(VmOp::kGeneral, 0, code, statement);
}

void VmCompiler::Condition(Code* code, const STATEMENT_BLOCK* statement, Label target, bool jump_if) {
  const Mark mark = Here();
  if (TryCondition(code, target, jump_if)) {
    ReleaseTemps();
    if (!fails_) return;
    const Label back = NewLabel();
    Bind(back);
    Road road{fail_, back, VmOp::kGeneralLow, NewTemp(), code, statement};
    road.target = target;
    road.jump_if = jump_if;
    roads_.push_back(road);
    ReleaseTemps();
    return;
  }
  Back(mark);
  const int32_t value = NewTemp();
  General(VmOp::kGeneralLow, value, code, statement);
  EmitJump(jump_if ? VmOp::kJumpNeImm : VmOp::kJumpEqImm, value, 0, target);
  ReleaseTemps();
}

bool VmCompiler::TryCondition(Code* code, Label target, bool jump_if) {
  const bool compares =
      code != nullptr && code->count > 2 && code->ops[code->count - 1].code == OpCode::kCompare;
  if (!compares) {
    if (!Root(code, Use::kLow)) return false;
    return JumpOn(Pop(), target, jump_if);
  }
  // Compared and jumped in one: the operands alone are evaluated.
  Code operands = *code;
  operands.count = code->count - 1;
  const Op& comparison = code->ops[operands.count];
  StartRoot(code);
  const size_t pending = pending_.size();
  for (int i = 0; i < operands.count; ++i) {
    if (!Step(operands, operands.ops[i], false)) return false;
  }
  if (pending_.size() != pending || items_.size() != level_base_ + 2) return false;
  const Item right = Pop();
  const Item left = Pop();
  return JumpOnComparison(comparison.token, left, right, target, jump_if);
}

// Any value is tested by its low 32 bits.
bool VmCompiler::JumpOn(const Item& item, Label target, bool jump_if) {
  int32_t place = item.is_real ? RealPlace(item) : IntPlace(item);
  if (place == kNoPlace) return false;
  EmitJump(jump_if ? VmOp::kJumpNeImm : VmOp::kJumpEqImm, place, 0, target);
  return true;
}

bool VmCompiler::JumpOnComparison(Tok token, const Item& left, const Item& right, Label target,
                                  bool jump_if) {
  if (!Numeric(left) || !Numeric(right)) return false;
  const bool left_number = left.where == Item::Where::kNumber;
  const bool right_number = right.where == Item::Where::kNumber;
  if (left_number && !right_number && !right.is_real)
    return JumpOnComparison(Mirrored(token), right, left, target, jump_if);
  const JumpForm* form = kJumpForms;
  while (form->token != token) ++form;
  if (left.is_real || right.is_real) {
    const int32_t a = RealPlace(left);
    const int32_t b = RealPlace(right);
    if (a == kNoPlace || b == kNoPlace) return false;
    EmitJump(jump_if ? form->real : form->other_real, form->swapped ? b : a, form->swapped ? a : b, target);
    return true;
  }
  const int32_t a = IntPlace(left);
  if (a == kNoPlace) return false;
  VmOp op = jump_if ? form->immediate : form->other_immediate;
  int32_t first = a;
  auto second = static_cast<int32_t>(right.number);
  if (!right_number) {
    const int32_t b = IntPlace(right);
    if (b == kNoPlace) return false;
    // Not less is the other way round less or equal.
    const bool swapped =
        form->swapped != (!jump_if && form->jump != VmOp::kJumpEq && form->jump != VmOp::kJumpNe);
    op = jump_if ? form->jump : form->other;
    first = swapped ? b : a;
    second = swapped ? a : b;
  }
  const size_t last = code_.insns.size();
  if (last > barrier_ && LoopForm(op) != VmOp::kJump) {
    const Insn& step = code_.insns.back();
    const bool steps =
        step.op == VmOp::kAddImm && step.a == step.b && step.a == first && (right_number || step.a != second);
    const int64_t size = step.c < 0 ? -int64_t{step.c} : step.c;
    if (steps && size <= static_cast<int64_t>(kLargestNumber16)) {
      const int number = step.c;
      code_.insns.pop_back();
      EmitJump(LoopForm(op), first, second, target, number);
      return true;
    }
  }
  EmitJump(op, first, second, target);
  return true;
}

}  // namespace vorc
