#include "interp/interpreter.h"
#include "interp/vm_compiler.h"

namespace vorc {

/// The instructions that move a value of one form from or to each kind of place, kJump where there is none.
struct AccessOps {
  VmOp frame, data, at;
  VmOp element, data_element, element2, data_element2;
  VmOp pointed, member;
};

namespace {

struct FormOps {
  AccessOps load, store;
};

const FormOps& OpsOf(Form form) {
  using enum VmOp;
  constexpr VmOp kNo = kJump;
  static constexpr FormOps kIntOps = {
      {kMoveInt, kLoadDataInt, kLoadIntAt, kLoadElementInt, kLoadDataElementInt, kLoadElement2Int,
       kLoadDataElement2Int, kLoadPointedInt, kLoadMemberInt},
      {kMoveInt, kStoreDataInt, kStoreIntAt, kStoreElementInt, kStoreDataElementInt, kStoreElement2Int,
       kStoreDataElement2Int, kStorePointedInt, kStoreMemberInt}};
  static constexpr FormOps kByteOps = {{kLoadByte, kLoadDataByte, kLoadByteAt, kLoadElementByte,
                                        kLoadDataElementByte, kNo, kNo, kLoadPointedByte, kNo},
                                       {kStoreByte, kStoreDataByte, kStoreByteAt, kStoreElementByte,
                                        kStoreDataElementByte, kNo, kNo, kStorePointedByte, kNo}};
  static constexpr FormOps kHalfOps = {
      {kLoadHalf, kLoadDataHalf, kLoadHalfAt, kNo, kNo, kNo, kNo, kNo, kNo},
      {kStoreHalf, kStoreDataHalf, kStoreHalfAt, kNo, kNo, kNo, kNo, kNo, kNo}};
  static constexpr FormOps kRealOps = {
      {kMoveReal, kLoadDataReal, kLoadRealAt, kLoadElementReal, kLoadDataElementReal, kLoadElement2Real,
       kLoadDataElement2Real, kLoadPointedReal, kLoadMemberReal},
      {kMoveReal, kStoreDataReal, kStoreRealAt, kStoreElementReal, kStoreDataElementReal, kStoreElement2Real,
       kStoreDataElement2Real, kStorePointedReal, kStoreMemberReal}};
  static constexpr FormOps kFloatOps = {
      {kLoadFloat, kLoadDataFloat, kLoadFloatAt, kNo, kNo, kNo, kNo, kNo, kNo},
      {kStoreFloat, kStoreDataFloat, kStoreFloatAt, kNo, kNo, kNo, kNo, kNo, kNo}};
  static constexpr FormOps kWordOps = {
      {kMoveWord, kLoadDataWord, kLoadWordAt, kNo, kNo, kNo, kNo, kNo, kLoadMemberWord},
      {kMoveWord, kStoreDataWord, kStoreWordAt, kNo, kNo, kNo, kNo, kNo, kStoreMemberWord}};
  switch (form) {
    case Form::kByte: return kByteOps;
    case Form::kHalf: return kHalfOps;
    case Form::kReal: return kRealOps;
    case Form::kFloat: return kFloatOps;
    case Form::kWord: return kWordOps;
    default: return kIntOps;
  }
}

bool Between(VmOp op, VmOp first, VmOp last) {
  return op >= first && op <= last;
}

// True for an instruction whose one result is what it leaves in `a`.
bool Produces(VmOp op) {
  return Between(op, VmOp::kMoveInt, VmOp::kSignHalf) || Between(op, VmOp::kMoveReal, VmOp::kRealToInt) ||
         Between(op, VmOp::kLoadByte, VmOp::kMoveWord) ||
         Between(op, VmOp::kLoadDataInt, VmOp::kLoadDataWord) ||
         Between(op, VmOp::kLoadElementInt, VmOp::kLoadDataElementReal) ||
         Between(op, VmOp::kLoadElement2Int, VmOp::kLoadDataElement2Real) ||
         Between(op, VmOp::kLoadPointedInt, VmOp::kLoadPointedReal) ||
         Between(op, VmOp::kLoadMemberInt, VmOp::kLoadMemberWord) ||
         Between(op, VmOp::kLoadIntAt, VmOp::kLoadWordAt) || Between(op, VmOp::kCall, VmOp::kTakeReal);
}

}  // namespace

// Lets the instruction that made a temporary leave its result elsewhere.
bool VmCompiler::Redirect(int32_t from, int32_t to) {
  Insn* maker = MakerOf(from);
  if (maker == nullptr) return false;
  maker->a = to;
  return true;
}

// The instruction just emitted if all that it does is to make this temporary.
Insn* VmCompiler::MakerOf(int32_t place) {
  if (place > -static_cast<int32_t>(ScriptMemory::kShadowDistance) || code_.insns.size() <= barrier_)
    return nullptr;
  Insn& last = code_.insns.back();
  return Produces(last.op) && last.a == place ? &last : nullptr;
}

// Moves a value between a place and a temporary, whose instructions name the temporary first everywhere but
// where it is stored as it is.
bool VmCompiler::EmitAccess(const AccessOps& ops, bool stores, const Item& item, int32_t value) {
  const auto plain = [&](VmOp op) {
    Emit(op, stores ? item.place : value, stores ? value : item.place);
    return true;
  };
  VmOp op = VmOp::kJump;
  switch (item.where) {
    case Item::Where::kFrame: return plain(ops.frame);
    case Item::Where::kData: return plain(ops.data);
    case Item::Where::kAddress: Emit(ops.at, value, item.place, item.offset); return true;
    case Item::Where::kMember:
      op = ops.member;
      if (op != VmOp::kJump) Emit(op, value, item.place, item.offset, item.site);
      break;
    case Item::Where::kElement:
      if (item.index_count == 2)
        op = item.in_data ? ops.data_element2 : ops.element2;
      else
        op = item.in_data ? ops.data_element : ops.element;
      if (op != VmOp::kJump) Emit(op, value, item.index, item.index_count == 2 ? item.index2 : 0, item.site);
      break;
    case Item::Where::kPointed:
      op = ops.pointed;
      if (op != VmOp::kJump) Emit(op, value, item.index, item.place, item.site);
      break;
    default: return false;
  }
  if (op != VmOp::kJump) return true;
  Item address = item;
  if (!ToAddress(&address)) return false;
  Emit(ops.at, value, address.place, address.offset);
  return true;
}

bool VmCompiler::LoadTo(const Item& item, int32_t place) {
  return item.form != Form::kNone && EmitAccess(OpsOf(item.form).load, false, item, place);
}

// The value as an integer; a real number loses its fraction.
int32_t VmCompiler::WholePlace(const Item& item) {
  if (!item.is_real) return IntPlace(item);
  const int32_t real = RealPlace(item);
  if (real == kNoPlace) return kNoPlace;
  const int32_t place = NewTemp();
  Emit(VmOp::kRealToInt, place, real);
  return place;
}

// All 64 bits of a pointer or a typeless variable.
int32_t VmCompiler::WordPlace(const Item& item) {
  if (!item.IsVariable() || item.form != Form::kWord || !Guard(item)) return kNoPlace;
  if (item.where == Item::Where::kFrame) return item.place;
  const int32_t place = NewTemp();
  return LoadTo(item, place) ? place : kNoPlace;
}

bool VmCompiler::StoreTypeless(const Item& target, const Item& value) {
  if (target.where == Item::Where::kFrame && value.where == Item::Where::kTextValue) {
    int number = 0;
    const TextLoan* loan = Lend(value, true);
    Site& site = NewSite(&number);
    site.symbol = target.symbol;
    site.loan = loan;
    Emit(VmOp::kStoreTypelessText, target.place, value.place, 0, number);
    return true;
  }
  if (target.where != Item::Where::kFrame || !Numeric(value) || value.kind == 3) return false;
  int number = 0;
  if (value.is_real) {
    const int32_t from = RealPlace(value);
    if (from == kNoPlace) return false;
    NewSite(&number).state = &host_.StateOf(target.symbol);
    Emit(VmOp::kStoreTypelessWord, target.place, from, static_cast<int32_t>(Tok::double_), number);
    return true;
  }
  const bool word = value.typeless;
  if (!word && (!value.exact || value.is_unsigned)) return false;
  const int32_t from = word ? WordPlace(value) : IntPlace(value);
  if (from == kNoPlace) return false;
  NewSite(&number).state = &host_.StateOf(target.symbol);
  Insn* maker = word ? nullptr : MakerOf(from);
  if (maker != nullptr && (maker->op == VmOp::kAddInt || maker->op == VmOp::kAddImm)) {
    *maker = {maker->op == VmOp::kAddInt ? VmOp::kAddTypeless : VmOp::kAddTypelessImm,
              static_cast<uint16_t>(number), target.place, maker->b, maker->c};
    return true;
  }
  Emit(word ? VmOp::kStoreTypelessWord : VmOp::kStoreTypelessInt, target.place, from,
       static_cast<int32_t>(Tok::int_), number);
  return true;
}

// Stores a number in the target's form. What the value was stays as it is.
bool VmCompiler::Store(const Item& target, const Item& value) {
  if (target.typeless) return StoreTypeless(target, value);
  if (target.form == Form::kNone || target.kind == 1) return false;
  int32_t from = kNoPlace;
  const bool real_target = target.form == Form::kReal || target.form == Form::kFloat;
  if (target.form == Form::kWord && value.where == Item::Where::kTextValue) {
    from = value.place;
  } else if (target.form == Form::kWord) {
    // A pointer. Texts have rules of their own.
    if (!value.IsVariable() || value.typeless || value.kind != 3 || !Numeric(value)) return false;
    from = WordPlace(value);
  } else if (real_target) {
    if (value.IsVariable() && !value.is_real && (value.typeless || value.kind == 3)) return false;
    from = RealPlace(value);
  } else {
    from = WholePlace(value);
  }
  if (from == kNoPlace) return false;
  const bool whole = target.form == Form::kInt || target.form == Form::kReal;
  if (target.where == Item::Where::kFrame && whole && Redirect(from, target.place)) return true;
  return EmitAccess(OpsOf(target.form).store, true, target, from);
}

bool VmCompiler::Assign(const Op& op) {
  if (items_.size() < level_base_ + 2) return false;
  Item right = Pop();
  const Item left = Pop();
  if (!left.IsVariable() || (left.grouped && left.typeless)) return false;
  // A struct is copied as a whole, and an array's name is no number: the general road knows how.
  if (right.where == Item::Where::kNowhere || (left.kind == 2 && left.form == Form::kNone)) return false;
  const bool unused = op.last && depth_ == 1 && dropped_;
  if (!unused && right.IsText()) return false;
  if (!unused && right.IsVariable()) {
    // What goes on from here is the value as it was.
    const Order order = order_;
    order_ = Order::kOrdered;
    const bool captured = right.kind == 2 && Capture(&right);
    order_ = order;
    if (!captured) return false;
  }
  if (!unused) barrier_ = code_.insns.size();
  if (!Store(left, right)) return false;
  if (unused) right = Item();
  right.indexed = false;
  items_.push_back(right);
  return true;
}

bool VmCompiler::StepVariable(Item item, int step) {
  if (item.kind != 2 || !item.IsVariable()) return false;
  if (item.typeless) {
    if (item.where != Item::Where::kFrame || item.is_real || !Guard(item)) return false;
    Emit(VmOp::kAddWord, item.place, 0, step);
    return true;
  }
  const bool in_place = item.where == Item::Where::kFrame;
  if (item.form == Form::kReal) {
    if (!in_place && !ToAddress(&item)) return false;
    const int32_t place = in_place ? item.place : NewTemp();
    int number = 0;
    NewSite(&number).real = step;
    if (!in_place && !LoadTo(item, place)) return false;
    Emit(VmOp::kAddRealConst, place, place, 0, number);
    if (!in_place) Emit(VmOp::kStoreRealAt, place, item.place, item.offset);
    return true;
  }
  if (item.form != Form::kInt && item.form != Form::kByte && item.form != Form::kHalf) return false;
  if (in_place && item.form == Form::kInt) {
    Emit(VmOp::kAddImm, item.place, item.place, step);
    return true;
  }
  const bool direct = in_place || item.where == Item::Where::kData;
  if (!direct && !ToAddress(&item)) return false;
  const int32_t place = NewTemp();
  if (!direct && item.form == Form::kInt) {
    Emit(VmOp::kConstInt, place, 0, step);
    Emit(VmOp::kAddIntAt, place, item.place, item.offset);
    return true;
  }
  if (!LoadTo(item, place)) return false;
  Emit(VmOp::kAddImm, place, place, step);
  Item value;
  value.where = Item::Where::kValue;
  value.place = place;
  barrier_ = code_.insns.size();
  return Store(item, value);
}

// `op=`. Unlike other reads, this one keeps the sign of a narrow integer.
bool VmCompiler::Compound(const Op& op) {
  if (items_.size() < level_base_ + 2) return false;
  const Item right = Pop();
  Item left = Pop();
  if (!left.IsVariable() || left.kind != 2 || !Numeric(left) || !Numeric(right)) return false;
  if (left.grouped && left.typeless) return false;
  if (right.is_unsigned || right.kind == 3) return false;
  if (right.IsVariable() && right.typeless && !right.is_real) return false;
  Tok token = Tok::NOTOKEN;
  switch (op.token) {
    case Tok::PLUS_EQ: token = Tok::PLUS; break;
    case Tok::MINUS_EQ: token = Tok::MINUS; break;
    case Tok::STAR_EQ: token = Tok::STAR; break;
    case Tok::SLASH_EQ: token = Tok::SLASH; break;
    case Tok::DIV_EQ: token = Tok::MOD; break;
    case Tok::BITAND_EQ: token = Tok::BITAND; break;
    case Tok::BITOR_EQ: token = Tok::BITOR; break;
    case Tok::HAT_EQ: token = Tok::XOR; break;
    case Tok::LEFTSHIFT_EQ: token = Tok::LEFTSHIFT; break;
    case Tok::RIGHTSHIFT_EQ: token = Tok::RIGHTSHIFT; break;
    default: return false;
  }
  const bool real = left.is_real || right.is_real;
  if (real && token != Tok::PLUS && token != Tok::MINUS && token != Tok::STAR && token != Tok::SLASH)
    return false;
  // A typeless integer is 64 bits wide here.
  if (left.typeless && !real) return false;
  const bool in_frame = left.where == Item::Where::kFrame || left.where == Item::Where::kData;
  if (!in_frame && !ToAddress(&left)) return false;
  if (left.where == Item::Where::kAddress && left.form == Form::kInt && token == Tok::PLUS && !real &&
      op.last) {
    const int32_t from = IntPlace(right);
    if (from == kNoPlace) return false;
    Emit(VmOp::kAddIntAt, from, left.place, left.offset);
    items_.emplace_back();
    return true;
  }
  Item read = left;
  const bool narrow = left.form == Form::kByte || left.form == Form::kHalf;
  if (narrow && !real) {
    const int32_t place = NewTemp();
    if (!LoadTo(left, place)) return false;
    if (left.form == Form::kHalf || left.type != Tok::UCHAR)
      Emit(left.form == Form::kByte ? VmOp::kSignByte : VmOp::kSignHalf, place, place);
    read = Item();
    read.where = Item::Where::kValue;
    read.place = place;
  } else if (narrow) {
    return false;
  }
  // Not released below: the target's address is still needed.
  items_.push_back(left);
  Item result;
  bool good = false;
  if (real && token == Tok::SLASH) {
    const int32_t a = RealPlace(read);
    const int32_t b = RealPlace(right);
    result.where = Item::Where::kValue;
    result.is_real = true;
    result.place = NewTemp();
    good = a != kNoPlace && b != kNoPlace;
    if (good) Emit(VmOp::kQuotReal, result.place, a, b);
  } else {
    good = real ? Reals(token, op, read, right, &result) : Integers(token, op, read, right, &result);
  }
  items_.pop_back();
  if (!good || !Store(left, result)) return false;
  // The value of the whole is rarely asked for, and then the general road gives it.
  items_.emplace_back();
  return true;
}

}  // namespace vorc
