#include "interp/fast_int.h"

#include <new>
#include <vector>

#include "interp/memory.h"

namespace vorc {

namespace {

constexpr size_t kMostOperands = 24;  // of one level; nested groups have levels of their own
constexpr size_t kMostValues = 60;
constexpr size_t kMostSteps = 500;
constexpr int kDeepestGroups = 16;

struct BinaryForm {
  Tok token;
  FastCode code;
};
constexpr BinaryForm kBinaryForms[] = {
    {Tok::PLUS, FastCode::kAdd},
    {Tok::MINUS, FastCode::kSubtract},
    {Tok::STAR, FastCode::kMultiply},
    {Tok::SLASH, FastCode::kDivide},
    {Tok::DIV, FastCode::kDivide},
    {Tok::MOD, FastCode::kRemainder},
    {Tok::XOR, FastCode::kXor},
    {Tok::BITAND, FastCode::kAnd},
    {Tok::BITOR, FastCode::kOr},
    {Tok::LEFTSHIFT, FastCode::kShiftLeft},
    {Tok::RIGHTSHIFT, FastCode::kShiftRight},
    {Tok::LT, FastCode::kLess},
    {Tok::GT, FastCode::kGreater},
    {Tok::LE, FastCode::kLessEqual},
    {Tok::GE, FastCode::kGreaterEqual},
    {Tok::EQ, FastCode::kEqual},
    {Tok::NE, FastCode::kNotEqual},
};

/// Bytes of an integer type, 0 for a type that this is not for.
uint8_t SizeOf(Tok type) {
  switch (type) {
    case Tok::int_:
    case Tok::INT32:
    case Tok::UINT32: return 4;
    case Tok::char_:
    case Tok::UCHAR:
    case Tok::bool_: return 1;
    case Tok::INT16:
    case Tok::UINT16: return 2;
    default: return 0;
  }
}

class FastCompiler {
 public:
  explicit FastCompiler(Arena& arena) : arena_(arena) {}

  FastProgram* Run(const Code& code);

 private:
  /// What lies on the stack, as far as it is known beforehand.
  struct Item {
    bool place = false;
    bool indexed = false;
    bool is_int = true;
    bool is_unsigned = false;      ///< straight from an unsigned variable
    const Op* variable = nullptr;  ///< of a place: the variable, null for an element
  };

  bool Level(const Code& code, bool pure);
  bool Compile(const Code& code, const Op& op, bool pure);
  bool Variable(const Code& code, const Op& op, bool pure);
  bool Element(const Op& op, bool place);
  bool Binary(const Op& op);
  FastOp TakeRight();
  bool Logical(const Op& op);
  bool Unary(const Op& op);
  bool Store(const Op& op, const Code& code);
  bool Step(const Code& code);
  FastOp* Emit(FastCode code, const Op& op);
  bool PushItem(Item item);
  void SetPlace(FastOp* fast, const Op& op);

  Arena& arena_;
  std::vector<FastOp> ops_;
  std::vector<Item> items_;
  size_t level_base_ = 0;
  int depth_ = 0;
};

FastProgram* FastCompiler::Run(const Code& code) {
  if (!Level(code, false) || items_.size() != 1 || items_[0].place) return nullptr;
  auto* program = new (arena_.Allocate(sizeof(FastProgram))) FastProgram();
  program->count = static_cast<int>(ops_.size());
  program->ops = static_cast<FastOp*>(arena_.Allocate(sizeof(FastOp) * ops_.size()));
  for (size_t i = 0; i < ops_.size(); ++i) new (&program->ops[i]) FastOp(ops_[i]);
  program->exact = items_[0].is_int && !items_[0].indexed;
  return program;
}

// One expression; a `pure` one stands inside another and may change nothing.
bool FastCompiler::Level(const Code& code, bool pure) {
  const size_t outer = level_base_;
  level_base_ = items_.size();
  bool good = ++depth_ <= kDeepestGroups;
  const bool step =
      code.count == 2 && (code.ops[1].code == OpCode::kStepAfter || code.ops[1].code == OpCode::kStepBefore);
  if (step) {
    good = good && !pure && Step(code);
  } else {
    for (int i = 0; i < code.count && good; ++i) good = Compile(code, code.ops[i], pure);
  }
  good = good && items_.size() == level_base_ + 1;
  --depth_;
  level_base_ = outer;
  return good;
}

FastOp* FastCompiler::Emit(FastCode code, const Op& op) {
  FastOp fast;
  fast.code = code;
  fast.op = &op;
  ops_.push_back(fast);
  return &ops_.back();
}

bool FastCompiler::PushItem(Item item) {
  items_.push_back(item);
  return items_.size() - level_base_ <= kMostOperands && items_.size() <= kMostValues &&
         ops_.size() < kMostSteps;
}

bool FastCompiler::Compile(const Code& code, const Op& op, bool pure) {
  switch (op.code) {
    case OpCode::kNumber:
      if (op.node->NumberSize == 8) return false;
      Emit(FastCode::kConstant, op)->number = static_cast<int32_t>(op.number);
      return PushItem({false, false, true, op.number > INT32_MAX});
    case OpCode::kVariable: return Variable(code, op, pure);
    case OpCode::kGroup:
      if (op.sub == nullptr || !Level(*op.sub, true)) return false;
      items_.back().indexed = false;
      return true;
    case OpCode::kPlus:
    case OpCode::kMinus:
    case OpCode::kArithmetic:
    case OpCode::kCompare: return Binary(op);
    case OpCode::kAndOr: return Logical(op);
    case OpCode::kNegate:
    case OpCode::kNotInvert: return Unary(op);
    case OpCode::kAssign:
    case OpCode::kCompoundAssign: return !pure && Store(op, code);
    default: return false;
  }
}

void FastCompiler::SetPlace(FastOp* fast, const Op& op) {
  constexpr int64_t kWord = ScriptMemory::kWordSize;
  fast->size = SizeOf(op.type);
  fast->in_frame = op.storage != Storage::kGlobal;
  switch (op.storage) {
    case Storage::kLocal: fast->place = -op.offset * kWord; break;
    case Storage::kParameter: fast->place = op.offset * kWord; break;
    default: fast->place = reinterpret_cast<int64_t>(op.symbol->InterpreterData);
  }
}

bool FastCompiler::Variable(const Code& code, const Op& op, bool pure) {
  const SYM_REC* symbol = op.symbol;
  if (symbol == nullptr || symbol->ImplicitExtern || symbol->BitFieldWidth > 0 || op.record != nullptr)
    return false;
  if (symbol->Shape.UnsizedFirstDimension && op.storage == Storage::kGlobal) return false;
  if (op.storage == Storage::kMember || symbol->IsFunctionPointer || SizeOf(op.type) == 0) return false;
  if (op.storage == Storage::kGlobal && symbol->InterpreterData == nullptr) return false;
  // A place is only right where the operator that takes it ends the expression.
  const bool place = op.node->IsLvalue;
  if (place && (pure || items_.size() != level_base_ + static_cast<size_t>(&op - code.ops))) return false;
  if (op.index_count > 0) return Element(op, place);
  if (op.kind != 2) return false;
  const bool is_unsigned = (symbol->StorageType & UNSIGNED_VAR) != 0;
  if (place) return PushItem({true, false, true, is_unsigned, &op});
  SetPlace(Emit(FastCode::kLoad, op), op);
  return PushItem({false, false, op.type == Tok::int_ && !is_unsigned, is_unsigned});
}

bool FastCompiler::Element(const Op& op, bool place) {
  const bool array = op.dimensions == op.index_count && op.depth == 0 && op.storage != Storage::kParameter;
  const bool pointer = op.dimensions == 0 && op.depth == 1 && op.index_count == 1;
  if (!array && !pointer) return false;
  const size_t before = items_.size();
  for (int i = 0; i < op.index_count; ++i) {
    if (op.list[i] == nullptr || !Level(*op.list[i], true)) return false;
  }
  items_.resize(before);
  FastOp* fast = Emit(place ? FastCode::kPlaceElement : FastCode::kLoadElement, op);
  SetPlace(fast, op);
  fast->through_pointer = pointer;
  if (array && op.index_count == 1) fast->length = op.symbol->Shape.Dimensions[0];
  const bool is_unsigned = (op.symbol->StorageType & UNSIGNED_VAR) != 0;
  return PushItem({place, true, op.type == Tok::int_ && !is_unsigned, is_unsigned});
}

bool FastCompiler::Binary(const Op& op) {
  if (items_.size() < level_base_ + 2) return false;
  const Item right = items_.back();
  items_.pop_back();
  if (right.place || items_.back().place) return false;
  FastOp fast = TakeRight();
  fast.op = &op;
  for (const BinaryForm& form : kBinaryForms) {
    if (form.token == op.token) fast.code = form.code;
  }
  ops_.push_back(fast);
  items_.back() = {};
  return true;
}

// A constant or a variable that was just pushed needs no turn of its own.
FastOp FastCompiler::TakeRight() {
  FastOp fast;
  const FastOp& last = ops_.back();
  if (last.code == FastCode::kConstant) {
    fast.right = FastRight::kConstant;
    fast.number = last.number;
  } else if (last.code == FastCode::kLoad && last.size == sizeof(int32_t)) {
    fast.right = FastRight::kVariable;
    fast.in_frame = last.in_frame;
    fast.place = last.place;
  } else {
    return fast;
  }
  ops_.pop_back();
  return fast;
}

bool FastCompiler::Logical(const Op& op) {
  if (items_.size() < level_base_ + 2) return false;
  const Item right = items_.back();
  items_.pop_back();
  Item& left = items_.back();
  if (right.place || left.place) return false;
  if (left.indexed || right.indexed) {
    Emit(FastCode::kDrop, op);
    return true;
  }
  Emit(op.token == Tok::AND ? FastCode::kLogicalAnd : FastCode::kLogicalOr, op);
  left = {};
  return true;
}

bool FastCompiler::Unary(const Op& op) {
  if (items_.size() <= level_base_ || items_.back().place) return false;
  if (op.code == OpCode::kNegate) {
    if (items_.back().indexed) return true;
    Emit(FastCode::kNegate, op);
  } else {
    Emit(op.token == Tok::NOT ? FastCode::kNot : FastCode::kInvert, op);
  }
  items_.back() = {};
  return true;
}

bool FastCompiler::Store(const Op& op, const Code& code) {
  // Only other stores may follow, so that nothing reads what has been stored.
  for (const Op* at = &op; at != code.ops + code.count; ++at) {
    if (at->code != OpCode::kAssign && at->code != OpCode::kCompoundAssign) return false;
  }
  if (items_.size() < level_base_ + 2) return false;
  const Item right = items_.back();
  items_.pop_back();
  if (right.place || !items_.back().place) return false;
  if (op.code == OpCode::kCompoundAssign && right.is_unsigned) return false;
  const bool assign = op.code == OpCode::kAssign;
  if (const Op* variable = items_.back().variable) {
    SetPlace(Emit(assign ? FastCode::kStore : FastCode::kCompound, op), *variable);
    ops_.back().type = variable->type;
  } else {
    Emit(assign ? FastCode::kStoreElement : FastCode::kCompoundElement, op);
  }
  items_.back() = {false, false, right.is_int && op.code == OpCode::kAssign};
  return true;
}

// `i++` and the like by themselves.
bool FastCompiler::Step(const Code& code) {
  const Op& op = code.ops[0];
  if (op.code != OpCode::kVariable || !op.plain_int || op.index_count > 0) return false;
  if (op.symbol->ImplicitExtern || (op.storage == Storage::kGlobal && op.symbol->InterpreterData == nullptr))
    return false;
  const Tok token = code.ops[1].token;
  const bool up = token == Tok::PLUS_PLUS || token == Tok::POST_PLUS_PLUS;
  SetPlace(Emit(up ? FastCode::kIncrement : FastCode::kDecrement, op), op);
  return PushItem({});
}

}  // namespace

FastProgram* CompileFast(Arena& arena, const Code& code) {
  return FastCompiler(arena).Run(code);
}

}  // namespace vorc
