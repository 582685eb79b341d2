#include <bit>

#include "interp/frame.h"
#include "interp/interpreter.h"
#include "interp/vm_compiler.h"
#include "program/overloads.h"

namespace vorc {

namespace {

constexpr int64_t kWord = ScriptMemory::kWordSize;
constexpr int kSavedWords = 2;
constexpr int32_t kMostArgumentWords = 4096;
constexpr int kMostBuiltinArguments = 16;

}  // namespace

// The function that a call runs, if that and its count of arguments are settled already.
FUNCPROTO_REC* VmCompiler::Callee(const Op& op) const {
  if (op.function->PrototypeOnly) return nullptr;
  FUNCPROTO_REC* function = ChooseOverload(op.function, op.argument_count);
  if (function == nullptr || !ParameterDataTypeMatch(function, op.argument_count)) return nullptr;
  const bool plain =
      function->ProcBody != nullptr && function->OwnerClass == nullptr && !function->HasVarArgs;
  return plain ? function : nullptr;
}

// True if evaluating it can neither change nor report anything, nor look behind a pointer.
bool VmCompiler::QuietTree(const Code* code) const {
  if (code == nullptr) return false;
  for (int i = 0; i < code->count; ++i) {
    const Op& op = code->ops[i];
    switch (op.code) {
      case OpCode::kNumber:
      case OpCode::kReal:
      case OpCode::kString:
      case OpCode::kPlus:
      case OpCode::kMinus:
      case OpCode::kArithmetic:
      case OpCode::kCompare:
      case OpCode::kAndOr:
      case OpCode::kNegate:
      case OpCode::kNotInvert: break;
      case OpCode::kVariable:
        if (op.index_count > 0) return false;
        break;
      case OpCode::kGroup:
        if (!QuietTree(op.sub)) return false;
        break;
      default: return false;
    }
  }
  return true;
}

bool VmCompiler::UserCall(const Op& op) {
  FUNCPROTO_REC* callee = Callee(op);
  if (callee == nullptr || order_ == Order::kPlain) return false;
  PROC_TABLE* body = callee->ProcBody;
  if (body->ArgSize < 0) PlaceParameters(slot_, callee);
  if (body->ArgSize > kMostArgumentWords) return false;
  const bool shared = callee->ParameterCount == 0;
  const int64_t words = kSavedWords + (shared ? op.argument_count : body->ArgSize);
  const int64_t own = int64_t{code_.function->ProcBody->LocalSize} + 1;
  const bool from_base = fixed_stack_ && !shared;
  const int64_t base = -kWord * (words + (from_base ? own : 0));
  if (base < INT32_MIN / 2) return false;
  const size_t first_item = items_.size();
  if (!Arguments(op, callee, static_cast<int32_t>(base))) return false;
  items_.resize(first_item);
  ReleaseTemps();
  const bool save = temps_ > 0 && (shared || temps_ > words + own);
  const int live = temps_;
  if (save) Emit(VmOp::kSaveTemps, 0, 0, live);
  int number = 0;
  Site& site = NewSite(&number);
  site.op = &op;
  site.callee = host_.CodeOf(callee);
  const int32_t result = NewTemp();
  const VmOp call = shared ? VmOp::kCallShared : from_base ? VmOp::kCall : VmOp::kCallBelow;
  Emit(call, result, 0, static_cast<int32_t>(base), number);
  if (save) Emit(VmOp::kRestoreTemps, 0, 0, live);
  if (callee->ReturnKind == FUNC_RETTYPE_BASICTYPE) {
    const Tok type = callee->ReturnType.BasicType;
    if (type == Tok::int_) return PushInt(result), true;
    if (type == Tok::double_ || type == Tok::float_) {
      Emit(VmOp::kTakeReal, result);
      return PushReal(result), true;
    }
    if (type == Tok::char_ || type == Tok::dollar) Emit(VmOp::kDropText);
  }
  items_.emplace_back();
  return true;
}

// Arguments are evaluated in order. One goes straight to its place if nothing behind it can see it there.
bool VmCompiler::Arguments(const Op& op, FUNCPROTO_REC* callee, int32_t base) {
  const size_t first_item = items_.size();
  int held = 0;
  for (int i = 0; i < op.argument_count; ++i) {
    if (op.list[i] == nullptr || !Level(*op.list[i], true)) return false;
    bool last_loud = true;
    for (int k = i + 1; k < op.argument_count; ++k) last_loud &= QuietTree(op.list[k]);
    if (!last_loud) {
      Item& item = items_.back();
      if (!Numeric(item) || !Capture(&item)) return false;
      continue;
    }
    if (!FlushArguments(callee, base, first_item, held, i + 1)) return false;
    held = i + 1;
    items_.resize(first_item);
    ReleaseTemps();
  }
  return true;
}

bool VmCompiler::FlushArguments(FUNCPROTO_REC* callee, int32_t base, size_t first_item, int first, int end) {
  if (callee->ParameterCount == 0) return true;
  SYM_REC* parameter = callee->ParametersHeader.Symbols.First;
  for (int i = 0; i < first; ++i) parameter = parameter->Next;
  for (int i = first; i < end; ++i, parameter = parameter->Next) {
    const Item item = items_[first_item + static_cast<size_t>(i - first)];
    const auto place = static_cast<int32_t>(base + parameter->FrameOffset * kWord);
    if (fixed_stack_) {
      if (!Argument(parameter, item, place)) return false;
      continue;
    }
    const int32_t temp = NewTemp();
    barrier_ = code_.insns.size();
    if (!Argument(parameter, item, temp)) return false;
    Emit(VmOp::kBelowStack, 0, temp, place);
  }
  return true;
}

// The 64 bits of a pointer that an operand gives, whatever it points to.
int32_t VmCompiler::PointerPlace(const Item& item) {
  if (item.where == Item::Where::kText) {
    int number = 0;
    NewSite(&number).real = std::bit_cast<double>(item.text);
    const int32_t place = NewTemp();
    Emit(VmOp::kConstReal, place, 0, 0, number);
    return place;
  }
  if (item.where == Item::Where::kTextValue) return item.place;
  if (!item.IsVariable() || item.typeless) return kNoPlace;
  if (item.kind == 3 || item.parameter_array) return WordPlace(item);
  if (item.kind != 1) return kNoPlace;
  Item address = item;
  if (!ToAddress(&address) || address.offset != 0) return kNoPlace;
  return address.place;
}

bool VmCompiler::Argument(SYM_REC* parameter, const Item& item, int32_t place) {
  const bool pointer =
      parameter->TotalDepth > 0 || parameter->Shape.DimensionCount > 0 || parameter->IsFunctionPointer;
  if (pointer) {
    if (item.where == Item::Where::kNumber && item.number >= 0) {
      Emit(VmOp::kArgConst, place, 0, static_cast<int32_t>(item.number));
      return !item.is_unsigned;
    }
    const int32_t from = PointerPlace(item);
    if (from == kNoPlace) return false;
    Emit(VmOp::kArgWord, place, from);
    return true;
  }
  if (parameter->Struct != nullptr || !Numeric(item)) return false;
  Item target;
  target.symbol = parameter;
  target.type = parameter->ValueType;
  target.typeless = parameter->ValueType == Tok::dollar;
  target.where = Item::Where::kFrame;
  target.place = place;
  Classify(&target);
  if (target.typeless) return StoreTypeless(target, item);
  if (target.form == Form::kReal || target.form == Form::kFloat) {
    if (item.IsVariable() && !item.is_real && (item.typeless || item.kind == 3)) return false;
    const int32_t from = RealPlace(item);
    if (from == kNoPlace) return false;
    Emit(target.form == Form::kReal ? VmOp::kArgWord : VmOp::kArgFloat, place, from);
    return true;
  }
  if (target.form == Form::kNone || target.form == Form::kWord) return false;
  if (item.where == Item::Where::kNumber && item.number >= 0 && target.form == Form::kInt) {
    Emit(VmOp::kArgConst, place, 0, static_cast<int32_t>(item.number));
    return true;
  }
  const int32_t from = WholePlace(item);
  if (from == kNoPlace) return false;
  if (target.form == Form::kInt && code_.insns.size() > barrier_ && item.where == Item::Where::kValue) {
    Insn& last = code_.insns.back();
    if (last.op == VmOp::kAddImm && last.a == from) {
      last.op = VmOp::kArgAddImm;
      last.a = place;
      return true;
    }
  }
  const VmOp op = target.form == Form::kByte   ? VmOp::kArgByte
                  : target.form == Form::kHalf ? VmOp::kArgHalf
                                               : VmOp::kArgInt;
  Emit(op, place, from);
  return true;
}

namespace {

// What a result of this type is as it comes from most calls.
BuiltinValue::Kind KindOf(BuiltinResult result) {
  switch (result) {
    case BuiltinResult::kText: return BuiltinValue::Kind::kText;
    case BuiltinResult::kDouble: return BuiltinValue::Kind::kDouble;
    default: return BuiltinValue::Kind::kInteger;
  }
}

bool IsPlainVariable(const Code& code) {
  return code.count == 1 && code.ops->symbol != nullptr && !code.ops->indexed;
}

}  // namespace

// A built-in is called with what its arguments are known to be, and else with what the general road
// makes of them.
bool VmCompiler::BuiltinCall(const Op& op) {
  if (op.symbol != nullptr || op.builtin == nullptr || order_ == Order::kPlain) return false;
  if (FindFunction(slot_, &slot_.Globals, op.node->name) != nullptr) return false;
  if (op.argument_count > kMostBuiltinArguments || op.builtin->handler == nullptr) return false;
  if (!op.builtin->any_count && op.argument_count != op.builtin->argument_count) return false;
  const size_t first_item = items_.size();
  auto values = std::make_unique<BuiltinValue[]>(static_cast<size_t>(op.argument_count));
  std::vector<BuiltinArgument> arguments;
  bool may_fail_later = false;
  for (int i = 0; i < op.argument_count; ++i) {
    const size_t sites = code_.sites.size();
    BuiltinArgument argument;
    argument.value = &values[static_cast<size_t>(i)];
    bool constant = false;
    if (!BuiltinArgumentOf(op, i, &argument, &constant)) return false;
    // What is checked here would be told ahead of what the general road finds wrong further left.
    if (may_fail_later && code_.sites.size() > sites) return false;
    may_fail_later |= argument.code != nullptr && !IsPlainVariable(*argument.code);
    if (!constant) arguments.push_back(argument);
  }
  items_.resize(first_item);
  ReleaseTemps();
  const int32_t result = NewTemp();
  int number = 0;
  const std::span<const BuiltinValue> all(values.get(), static_cast<size_t>(op.argument_count));
  NewSite(&number).builtin = std::make_unique<BuiltinSite>(
      BuiltinSite{op, slot_.FuncPrototypes.count(), KindOf(op.builtin->result), std::move(values),
                  std::move(arguments), nullptr, vorc::BuiltinCall(host_.runtime_, all)});
  Emit(VmOp::kBuiltin, result, 0, 0, number);
  switch (op.builtin->result) {
    case BuiltinResult::kInt:
      PushInt(result);
      items_.back().exact = false;
      items_.back().is_unsigned = true;
      return true;
    case BuiltinResult::kDouble: return PushReal(result), true;
    case BuiltinResult::kText: {
      Item text;
      text.where = Item::Where::kTextValue;
      text.place = result;
      text.site = number;
      items_.push_back(text);
      return true;
    }
    default: items_.emplace_back(); return true;
  }
}

bool VmCompiler::BuiltinArgumentOf(const Op& op, int position, BuiltinArgument* argument, bool* constant) {
  BuiltinValue* value = argument->value;
  Code* code = op.list[position];
  if (code == nullptr) return false;
  const Mark mark = Here();
  const size_t base = level_base_;
  const int depth = depth_;
  if (Level(*code, false)) {
    Item item = items_.back();
    if (item.where == Item::Where::kText || (item.where == Item::Where::kNumber && !item.is_unsigned)) {
      *constant = true;
      if (item.where == Item::Where::kText) {
        value->SetText(item.text);
      } else {
        value->kind = BuiltinValue::Kind::kInteger;
        value->integer = static_cast<int32_t>(item.number);
      }
      return true;
    }
    if (item.where == Item::Where::kTextValue) {
      if (!RunsFunctions(op, position + 1)) argument->loan = Lend(item, !MayChange(op, position + 1));
      argument->from = BuiltinArgument::From::kTextAt;
      argument->place = item.place;
      return true;
    }
    const bool holds_text = item.typeless || (item.kind == 3 && item.depth == 1 && item.type == Tok::char_);
    if (item.where == Item::Where::kFrame && holds_text) {
      argument->often_text = true;
      if (item.typeless) argument->state = &host_.StateOf(item.symbol);
      argument->place = item.place;
    }
    const bool plain = !item.IsVariable() || (item.kind == 2 && !item.typeless);
    if (Numeric(item) && plain && !item.is_unsigned) {
      items_.pop_back();
      const int32_t place = item.is_real ? RealPlace(item) : IntPlace(item);
      if (place == kNoPlace) return false;
      Item held;
      held.where = Item::Where::kValue;
      held.place = place;
      // A variable is read when its turn comes.
      if (item.IsVariable() && MayChange(op, position + 1)) {
        held.place = NewTemp();
        Emit(item.is_real ? VmOp::kMoveReal : VmOp::kMoveInt, held.place, place);
      }
      items_.push_back(held);
      argument->from = item.is_real ? BuiltinArgument::From::kReal : BuiltinArgument::From::kInt;
      value->kind = item.is_real ? BuiltinValue::Kind::kDouble : BuiltinValue::Kind::kInteger;
      argument->place = held.place;
      return true;
    }
  }
  Back(mark);
  level_base_ = base;
  depth_ = depth;
  // It is evaluated when all others have been, so they must not be able to change it.
  if (MayChange(op, position)) return false;
  argument->code = code;
  return true;
}

// What takes this text of a built-in copies it, before the same call can be made again or, `at_once`, any.
const TextLoan* VmCompiler::Lend(const Item& text, bool at_once) {
  BuiltinSite& site = *code_.sites[static_cast<size_t>(text.site)].builtin;
  site.loan = std::make_unique<TextLoan>();
  site.loan->at_once = at_once;
  site.call.set_loan(site.loan.get());
  return site.loan.get();
}

// True if an argument from this position on may call a function of the script.
bool VmCompiler::RunsFunctions(const Op& op, int position) {
  for (int i = position; i < op.argument_count; ++i) {
    if (CallsFunction(op.list[i])) return true;
  }
  return false;
}

// True if an argument from this position on may change a variable.
bool VmCompiler::MayChange(const Op& op, int position) {
  bool calls = false;
  int effects = 0;
  for (int i = position; i < op.argument_count; ++i) effects += CountEffects(op.list[i], false, &calls);
  return calls || effects > 0;
}

}  // namespace vorc
