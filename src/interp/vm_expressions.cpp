#include <bit>

#include "interp/interpreter.h"
#include "interp/vm_compiler.h"

namespace vorc {

namespace {

constexpr size_t kMostOperands = 24;
constexpr int kDeepestLevels = 16;

struct IntegerForm {
  Tok token;
  VmOp op;
  VmOp immediate;  ///< kJump where there is none
  bool commutes;
};
constexpr IntegerForm kIntegerForms[] = {
    {Tok::PLUS, VmOp::kAddInt, VmOp::kAddImm, true},
    {Tok::MINUS, VmOp::kSubInt, VmOp::kJump, false},
    {Tok::STAR, VmOp::kMulInt, VmOp::kMulImm, true},
    {Tok::SLASH, VmOp::kDivInt, VmOp::kDivImm, false},
    {Tok::DIV, VmOp::kDivInt, VmOp::kDivImm, false},
    {Tok::MOD, VmOp::kModInt, VmOp::kModImm, false},
    {Tok::BITAND, VmOp::kAndInt, VmOp::kAndImm, true},
    {Tok::BITOR, VmOp::kOrInt, VmOp::kOrImm, true},
    {Tok::XOR, VmOp::kXorInt, VmOp::kXorImm, true},
    {Tok::LEFTSHIFT, VmOp::kShlInt, VmOp::kShlImm, false},
    {Tok::RIGHTSHIFT, VmOp::kShrInt, VmOp::kShrImm, false},
};

bool IsCharType(Tok type) {
  return type == Tok::char_ || type == Tok::UCHAR;
}

}  // namespace

Item VmCompiler::Pop() {
  Item item = items_.back();
  items_.pop_back();
  return item;
}

void VmCompiler::PushInt(int32_t place) {
  Item item;
  item.where = Item::Where::kValue;
  item.place = place;
  item.exact = true;
  items_.push_back(item);
}

void VmCompiler::PushReal(int32_t place) {
  PushInt(place);
  items_.back().is_real = true;
  items_.back().exact = false;
}

// One chain of steps, which leaves one operand. `argument`: of a user's function, where texts don't join.
bool VmCompiler::Level(const Code& code, bool argument) {
  const size_t outer = level_base_;
  const size_t pending = pending_.size();
  level_base_ = items_.size();
  if (++depth_ > kDeepestLevels || code_.walked) return false;
  for (int i = 0; i < code.count; ++i) {
    if (!Step(code, code.ops[i], argument)) return false;
  }
  for (size_t i = pending; i < pending_.size(); ++i) {
    if (!StepVariable(pending_[i].item, pending_[i].step)) return false;
  }
  pending_.resize(pending);
  if (items_.size() != level_base_ + 1) return false;
  level_base_ = outer;
  --depth_;
  return true;
}

bool VmCompiler::Step(const Code& code, const Op& op, bool argument) {
  if (items_.size() - level_base_ > kMostOperands) return false;
  switch (op.code) {
    case OpCode::kNumber: {
      if (op.node->NumberSize == 8) return false;
      Item item;
      item.where = Item::Where::kNumber;
      item.number = static_cast<int32_t>(op.number);
      item.exact = true;
      item.is_unsigned = op.number > INT32_MAX;
      items_.push_back(item);
      return true;
    }
    case OpCode::kReal: {
      Item item;
      item.where = Item::Where::kDouble;
      item.real = op.real;
      item.is_real = true;
      items_.push_back(item);
      return true;
    }
    case OpCode::kString: {
      Item item;
      item.where = Item::Where::kText;
      item.text = op.text;
      items_.push_back(item);
      return true;
    }
    case OpCode::kVariable: return Variable(op);
    case OpCode::kGroup:
      if (op.sub == nullptr || !Level(*op.sub, argument) || !Numeric(items_.back())) return false;
      items_.back().indexed = false;
      items_.back().grouped = true;
      return Capture(&items_.back());
    case OpCode::kGroupObject:
      if (op.sub == nullptr || !Level(*op.sub, argument)) return false;
      return items_.back().IsVariable();
    case OpCode::kMember: return Member(op);
    case OpCode::kStar: return Star(op);
    case OpCode::kAddressOf: return AddressOf();
    case OpCode::kUserCall: return UserCall(op);
    case OpCode::kNameCall: return BuiltinCall(op);
    case OpCode::kPlus:
    case OpCode::kMinus:
    case OpCode::kArithmetic:
    case OpCode::kCompare: return Binary(op, argument);
    case OpCode::kAndOr: return Logical(op);
    case OpCode::kNegate:
    case OpCode::kNotInvert: return Unary(op);
    case OpCode::kUnaryPlus: return items_.size() > level_base_;
    case OpCode::kAssign: return Assign(op);
    case OpCode::kCompoundAssign: return !argument && Compound(op);
    case OpCode::kStepBefore:
    case OpCode::kStepAfter: {
      if (items_.size() <= level_base_) return false;
      const int step = op.token == Tok::PLUS_PLUS || op.token == Tok::POST_PLUS_PLUS ? 1 : -1;
      const Item& item = items_.back();
      if (!item.IsVariable() || item.kind != 2 || item.grouped || !Numeric(item)) return false;
      if (op.code == OpCode::kStepBefore) return StepVariable(item, step);
      pending_.push_back({item, step});
      return true;
    }
    default: (void)code; return false;
  }
}

// True for what arithmetic can take: a number, or a variable that is read as one.
bool VmCompiler::Numeric(const Item& item) const {
  if (item.where == Item::Where::kNowhere || item.IsText()) return false;
  if (!item.IsVariable()) return true;
  if (item.kind == 3) return item.depth > 1 || !IsCharType(item.type);
  return item.kind == 2 && item.form != Form::kNone;
}

// The place of an integer that holds the low 32 bits of an operand.
int32_t VmCompiler::IntPlace(const Item& item) {
  switch (item.where) {
    case Item::Where::kNumber: {
      const int32_t place = NewTemp();
      Emit(VmOp::kConstInt, place, 0, static_cast<int32_t>(item.number));
      return place;
    }
    case Item::Where::kValue: return item.is_real ? kNoPlace : item.place;
    case Item::Where::kNowhere:
    case Item::Where::kText:
    case Item::Where::kTextValue:
    case Item::Where::kDouble: return kNoPlace;
    default: break;
  }
  if (!Numeric(item) || item.is_real || !Guard(item)) return kNoPlace;
  const bool in_place = item.form == Form::kInt || item.form == Form::kWord;
  if (item.where == Item::Where::kFrame && in_place) return item.place;
  const int32_t place = NewTemp();
  return LoadTo(item, place) ? place : kNoPlace;
}

int32_t VmCompiler::RealPlace(const Item& item) {
  if (!item.is_real) {
    if (item.where == Item::Where::kNumber) {
      Item constant = item;
      constant.where = Item::Where::kDouble;
      constant.real = static_cast<double>(item.number);
      constant.is_real = true;
      return RealPlace(constant);
    }
    const int32_t from = IntPlace(item);
    if (from == kNoPlace) return kNoPlace;
    const int32_t place = NewTemp();
    Emit(VmOp::kIntToReal, place, from);
    return place;
  }
  switch (item.where) {
    case Item::Where::kNowhere: return kNoPlace;
    case Item::Where::kDouble: {
      int number = 0;
      NewSite(&number).real = item.real;
      const int32_t place = NewTemp();
      Emit(VmOp::kConstReal, place, 0, 0, number);
      return place;
    }
    case Item::Where::kValue: return item.place;
    default: break;
  }
  if (!Numeric(item) || !Guard(item)) return kNoPlace;
  if (item.where == Item::Where::kFrame && item.form != Form::kFloat) return item.place;
  const int32_t place = NewTemp();
  return LoadTo(item, place) ? place : kNoPlace;
}

// In ordered evaluation an operand that is read at the end of its level must be read there.
bool VmCompiler::Capture(Item* item) {
  if (order_ == Order::kPlain || !item->IsVariable()) return true;
  const bool real = item->is_real;
  if (item->kind != 2 || !Guard(*item)) return false;
  const int32_t place = NewTemp();
  if (!LoadTo(*item, place)) return false;
  Item value;
  value.where = Item::Where::kValue;
  value.place = place;
  value.is_real = real;
  value.exact = item->exact;
  value.is_unsigned = item->is_unsigned;
  *item = value;
  return true;
}

// From here on the variable is known to hold what was expected of it, or the general road is gone.
bool VmCompiler::Guard(const Item& item) {
  if (!item.typeless) return true;
  if (order_ != Order::kPlain) return false;
  for (const SYM_REC* symbol : guarded_) {
    if (symbol == item.symbol) return true;
  }
  guarded_.push_back(item.symbol);
  int number = 0;
  NewSite(&number).state = &host_.StateOf(item.symbol);
  fails_at_.push_back({static_cast<size_t>(number), fail_});
  fails_ = true;
  Emit(item.is_real ? VmOp::kGuardReal : VmOp::kGuardInt, 0, 0, 0, number);
  return true;
}

bool VmCompiler::Binary(const Op& op, bool) {
  if (items_.size() < level_base_ + 2) return false;
  const Item right = Pop();
  const Item left = Pop();
  if (!Numeric(left) || !Numeric(right)) return false;
  const Tok token = op.code == OpCode::kPlus ? Tok::PLUS : op.code == OpCode::kMinus ? Tok::MINUS : op.token;
  if (op.code == OpCode::kCompare) return Compare(token, left, right);
  Item result;
  const bool real = left.is_real || right.is_real;
  const bool good = real ? Reals(token, op, left, right, &result) : Integers(token, op, left, right, &result);
  if (good) items_.push_back(result);
  return good;
}

bool VmCompiler::Integers(Tok token, const Op& op, const Item& left, const Item& right, Item* result) {
  const bool left_number = left.where == Item::Where::kNumber;
  const bool right_number = right.where == Item::Where::kNumber;
  const IntegerForm* form = kIntegerForms;
  while (form->token != token) ++form;
  if (left_number && !right_number && form->commutes) return Integers(token, op, right, left, result);
  const bool divides = form->op == VmOp::kDivInt || form->op == VmOp::kModInt;
  const auto number = static_cast<int32_t>(right.number);
  result->where = Item::Where::kValue;
  result->exact = true;
  const int32_t a = IntPlace(left);
  if (a == kNoPlace) return false;
  const bool immediate = form->immediate != VmOp::kJump || token == Tok::MINUS;
  if (right_number && immediate && !(divides && number == 0)) {
    ReleaseTemps();
    result->place = NewTemp();
    if (token == Tok::MINUS)
      Emit(VmOp::kAddImm, result->place, a, static_cast<int32_t>(0U - static_cast<uint32_t>(number)));
    else if (form->op == VmOp::kModInt && number > 0 && std::has_single_bit(static_cast<uint32_t>(number)))
      Emit(VmOp::kModMask, result->place, a, number - 1);
    else
      Emit(form->immediate, result->place, a, number);
    return true;
  }
  const int32_t b = IntPlace(right);
  if (b == kNoPlace) return false;
  const int site = divides ? CheckSite(op, 0) : 0;
  ReleaseTemps();
  result->place = NewTemp();
  Emit(form->op, result->place, a, b, site);
  return true;
}

bool VmCompiler::Reals(Tok token, const Op& op, const Item& left, const Item& right, Item* result) {
  const bool divides = token == Tok::SLASH || token == Tok::DIV;
  const auto is_constant = [](const Item& item) {
    return item.where == Item::Where::kDouble || item.where == Item::Where::kNumber;
  };
  if (is_constant(left) && !is_constant(right) && (token == Tok::PLUS || token == Tok::STAR))
    return Reals(token, op, right, left, result);
  result->where = Item::Where::kValue;
  result->is_real = true;
  const int32_t a = RealPlace(left);
  if (a == kNoPlace) return false;
  const bool constant = is_constant(right);
  const double number = right.where == Item::Where::kDouble ? right.real : static_cast<double>(right.number);
  VmOp whole = VmOp::kJump;
  VmOp with_constant = VmOp::kJump;
  switch (token) {
    case Tok::PLUS:
      whole = VmOp::kAddReal;
      with_constant = VmOp::kAddRealConst;
      break;
    case Tok::MINUS:
      whole = VmOp::kSubReal;
      with_constant = VmOp::kSubRealConst;
      break;
    case Tok::STAR:
      whole = VmOp::kMulReal;
      with_constant = VmOp::kMulRealConst;
      break;
    case Tok::SLASH:
    case Tok::DIV:
      whole = VmOp::kDivReal;
      with_constant = VmOp::kDivRealConst;
      break;
    default: return false;
  }
  if (constant && !(divides && number == 0.0)) {
    int site = 0;
    NewSite(&site).real = number;
    ReleaseTemps();
    result->place = NewTemp();
    Emit(with_constant, result->place, a, 0, site);
    return true;
  }
  const int32_t b = RealPlace(right);
  if (b == kNoPlace) return false;
  const int site = divides ? CheckSite(op, 0) : 0;
  ReleaseTemps();
  result->place = NewTemp();
  Emit(whole, result->place, a, b, site);
  return true;
}

bool VmCompiler::Compare(Tok token, const Item& left, const Item& right) {
  const bool real = left.is_real || right.is_real;
  const int32_t a = real ? RealPlace(left) : IntPlace(left);
  const int32_t b = real ? RealPlace(right) : IntPlace(right);
  if (a == kNoPlace || b == kNoPlace) return false;
  ReleaseTemps();
  const int32_t place = NewTemp();
  const bool swapped = token == Tok::GT || token == Tok::GE;
  VmOp op = VmOp::kNeInt;
  switch (token) {
    case Tok::LT:
    case Tok::GT: op = real ? VmOp::kLtReal : VmOp::kLtInt; break;
    case Tok::LE:
    case Tok::GE: op = real ? VmOp::kLeReal : VmOp::kLeInt; break;
    case Tok::EQ: op = real ? VmOp::kEqReal : VmOp::kEqInt; break;
    default: op = real ? VmOp::kNeReal : VmOp::kNeInt;
  }
  Emit(op, place, swapped ? b : a, swapped ? a : b);
  PushInt(place);
  return true;
}

bool VmCompiler::Logical(const Op& op) {
  if (items_.size() < level_base_ + 2) return false;
  const Item right = Pop();
  Item left = Pop();
  if (!Numeric(left) || !Numeric(right)) return false;
  if (left.indexed || right.indexed) {
    // The left side is the result as it stands; the right one has still been looked up.
    if (right.IsVariable() && right.where != Item::Where::kFrame && right.where != Item::Where::kData &&
        IntPlace(right) == kNoPlace && RealPlace(right) == kNoPlace)
      return false;
    items_.push_back(left);
    return true;
  }
  int32_t places[2];
  const Item* sides[] = {&left, &right};
  for (int i = 0; i < 2; ++i) {
    places[i] = sides[i]->is_real ? RealPlace(*sides[i]) : IntPlace(*sides[i]);
    if (places[i] == kNoPlace) return false;
    if (!sides[i]->is_real) continue;
    const int32_t truth = NewTemp();
    Emit(VmOp::kRealTruth, truth, places[i]);
    places[i] = truth;
  }
  ReleaseTemps();
  const int32_t place = NewTemp();
  Emit(op.token == Tok::AND ? VmOp::kBothTrue : VmOp::kOneTrue, place, places[0], places[1]);
  PushInt(place);
  return true;
}

bool VmCompiler::Unary(const Op& op) {
  if (items_.size() <= level_base_) return false;
  Item item = Pop();
  if (!Numeric(item)) return false;
  if (op.code == OpCode::kNegate && item.indexed) {
    items_.push_back(item);
    return true;
  }
  if (op.code == OpCode::kNegate && item.where == Item::Where::kNumber) {
    item.number = static_cast<int32_t>(0U - static_cast<uint32_t>(item.number));
    item.is_unsigned = false;
    items_.push_back(item);
    return true;
  }
  if (op.code == OpCode::kNegate && item.where == Item::Where::kDouble) {
    item.real = -item.real;
    items_.push_back(item);
    return true;
  }
  VmOp operation = op.code == OpCode::kNegate ? VmOp::kNegInt
                   : op.token == Tok::NOT     ? VmOp::kNotInt
                                              : VmOp::kInvInt;
  const bool word = item.IsVariable() && (item.kind == 3 || item.typeless);
  int32_t from = kNoPlace;
  if (item.is_real) {
    from = RealPlace(item);
    if (from == kNoPlace || op.code != OpCode::kNegate) return false;
    operation = VmOp::kNegReal;
  } else if (word && operation == VmOp::kNotInt) {
    from = WordPlace(item);
    operation = VmOp::kNotWord;
  } else {
    from = IntPlace(item);
  }
  if (from == kNoPlace) return false;
  ReleaseTemps();
  const int32_t place = NewTemp();
  Emit(operation, place, from);
  if (item.is_real)
    PushReal(place);
  else
    PushInt(place);
  return true;
}

}  // namespace vorc
