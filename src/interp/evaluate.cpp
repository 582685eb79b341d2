#include <cstdlib>
#include <cstring>

#include "base/host_stack.h"
#include "base/trace.h"
#include "base/truncate.h"
#include "interp/interpreter.h"
#include "interp/numbers.h"

namespace vorc {

namespace {

constexpr int kDeepestOperands = 32;
// Every call takes at least three words of the script's stack.
constexpr size_t kMostCalls = ScriptMemory::kStackWords / 3;
constexpr size_t kSaveMemory = size_t{64} << 20;
constexpr size_t kOperandMemory = size_t{256} << 20;
constexpr size_t kFewOperands = size_t{16} << 20;

double AsDouble(const Entry& entry) {
  return entry.IsDouble() ? entry.real : static_cast<double>(entry.Low());
}

bool IsTrue(const Entry& entry) {
  if (entry.IsDouble()) return entry.real != 0.0;
  return entry.Low() != 0;
}

}  // namespace

Interpreter::Interpreter(C_SLOT& slot, Road road)
    : slot_(slot),
      runtime_(memory_),
      walks_(road == Road::kWalker || TraceOn() || std::getenv("VORC_WALK") != nullptr) {
  constexpr size_t kRecords = kMostCalls * sizeof(CallRecord);
  constexpr size_t kStates = capacity::kStatementBlocks;
  constexpr size_t kSymbols = (capacity::kSymbols + 1) * sizeof(SymbolState);
  constexpr size_t kChains = (capacity::kExpressions + 1) * sizeof(Code*);
  constexpr size_t kFixed = ReservedPieces::RoomFor(kRecords) + ReservedPieces::RoomFor(kSaveMemory) +
                            ReservedPieces::RoomFor(kStates) + ReservedPieces::RoomFor(kSymbols) +
                            ReservedPieces::RoomFor(kChains);
  work_memory_.emplace(std::initializer_list<size_t>{kFixed + kOperandMemory, kFixed + kFewOperands});
  const std::span<char> rest = work_memory_->Rest();
  if (rest.data() == nullptr) return;
  record_top_ = reinterpret_cast<CallRecord*>(work_memory_->Take(kRecords));
  record_end_ = record_top_ + kMostCalls;
  save_top_ = work_memory_->Take(kSaveMemory);
  save_end_ = save_top_ + kSaveMemory;
  exec_states_ = reinterpret_cast<uint8_t*>(work_memory_->Take(kStates));
  symbol_states_ = reinterpret_cast<SymbolState*>(work_memory_->Take(kSymbols));
  decoder_.KeepIn(reinterpret_cast<Code**>(work_memory_->Take(kChains)));
  const std::span<char> operands = work_memory_->Rest();
  operands_ = operands_begin_ = reinterpret_cast<Entry*>(operands.data());
  operands_end_ = operands_ + operands.size() / sizeof(Entry) - 2 * kDeepestOperands;
}

bool Interpreter::Fail(const EXPR_NODE* node, const std::string& text) {
  slot_.ErrorAt(node == nullptr ? current_line_ : node->Line, 0, text);
  return false;
}

bool Interpreter::CheckTop(const Entry* base, const Entry* top) {
  if (top - base > kDeepestOperands) {
    slot_.ErrorAt({slot_.Place.File, 0}, 0, "Stack Overflow Error.");
    return false;
  }
  if (top < base) {
    slot_.ErrorAt({slot_.Place.File, 0}, 0, "Stack Underflow Error.");
    return false;
  }
  return true;
}

// Runs an expression and settles its value. Its operands lie from `operands_` on.
bool Interpreter::Evaluate(Code* code, Mode mode, Entry* result) {
  if (code == nullptr) {
    *result = Entry();
    return true;
  }
  Entry* base = operands_;
  Entry* top = base - 1;
  if (!RunSteps(code, mode, base, &top)) {
    operands_ = base;
    return false;
  }
  operands_ = base;
  if (!CheckTop(base, top)) return false;
  *result = *top;
  if (!result->assigned) FinishResult(result);
  return true;
}

// The low 32 bits of an expression's value, which is all that conditions and indices look at.
bool Interpreter::EvaluateLow(Code* code, Mode mode, int32_t* low) {
  Entry value;
  if (!Evaluate(code, mode, &value)) return false;
  *low = value.Low();
  return true;
}

// The same without settling: what stands on top stays a place in memory.
bool Interpreter::EvaluateObject(Code* code, Mode mode, Entry* result) {
  if (code == nullptr) return false;
  Entry* base = operands_;
  Entry* top = base - 1;
  const bool good = RunSteps(code, mode, base, &top);
  operands_ = base;
  if (!good || !CheckTop(base, top)) return false;
  *result = *top;
  return true;
}

bool Interpreter::RunSteps(const Code* code, Mode mode, Entry* base, Entry** top) {
  if (failed()) return false;
  if (base > operands_end_ || HostStackLow()) return Fail(code->ops->node, "The script nests too deep.");
  const size_t pending = pending_.size();
  Entry* at = base - 1;
  for (const Op *op = code->ops, *end = op + code->count; op != end; ++op) {
    VORC_TRACE("DIAG: InterpretEvalExpression token=%d (%s) Top=%d pl=%p conststring=%s\n",
               static_cast<int>(op->node->Token), std::string(TokenName(op->node->Token)).c_str(),
               static_cast<int>(at - base), static_cast<const void*>(op->node),
               op->node->Literal == nullptr ? "(null)" : op->node->Literal);
    if (op->code <= OpCode::kNew) {
      if (op->code < OpCode::kValueCall || op->code == OpCode::kNew) ++at;
      if (at - base > kDeepestOperands && !CheckTop(base, at)) return false;
      if (at < base && !CheckTop(base, at)) return false;
      operands_ = at + 1;
      if (!Push(*op, mode, at)) return false;
      continue;
    }
    if (op->code >= OpCode::kPlus && op->code <= OpCode::kAndOr) {
      if (at - 1 < base) return CheckTop(base, at - 2), false;
      --at;
      if (at > base && AppendInPlace(*op, at[-1], at, at + 1)) continue;
      if (!StepBinary(*op, mode, at, at + 1)) return false;
      continue;
    }
    if (op->code == OpCode::kAssign || op->code == OpCode::kCompoundAssign) {
      if (at - 1 < base) return CheckTop(base, at - 2), false;
      --at;
      if (op->code == OpCode::kAssign)
        Assign(at, at + 1, op->last);
      else if (mode == Mode::kNormal && !CompoundAssign(*op, at, at + 1))
        return false;
      continue;
    }
    if (at < base) return CheckTop(base, at), false;
    operands_ = at + 1;
    if (!Step(*op, mode, at)) return false;
  }
  *top = at;
  return pending_.size() == pending || RunPostfixSteps(pending);
}

bool Interpreter::RunPostfixSteps(size_t first) {
  for (size_t i = first; i < pending_.size(); ++i) {
    const Op* op = pending_[i].op;
    const Tok token = op->token == Tok::POST_PLUS_PLUS ? Tok::PLUS_PLUS : Tok::MINUS_MINUS;
    if (!PrePostStep(op->node, token, &pending_[i].entry)) break;
  }
  pending_.resize(first);
  return !failed();
}

// Steps that put an operand on the stack, or turn the one on top into another place.
bool Interpreter::Push(const Op& op, Mode mode, Entry* entry) {
  switch (op.code) {
    case OpCode::kNumber:
      entry->SetInt(0);
      entry->value = op.number;
      entry->width = op.node->NumberSize;
      if (op.node->NumberSize == 8) entry->number_type = Tok::INT64;
      return true;
    case OpCode::kReal: entry->SetDouble(op.real); return true;
    case OpCode::kString: entry->SetText(op.text); return true;
    case OpCode::kVariable: return PushVariable(op, mode, entry);
    case OpCode::kFunctionName:
      entry->SetInt(0);
      entry->number_type = Tok::INT64;
      entry->width = 8;
      entry->value = reinterpret_cast<int64_t>(op.function);
      return true;
    case OpCode::kThis:
      *entry = Entry();
      entry->token = Tok::this_;
      entry->kind = 1;
      entry->symbol = op.symbol;
      entry->record = op.symbol == nullptr ? nullptr : op.symbol->Struct;
      entry->address = frame_.this_base;
      return true;
    case OpCode::kGroup: {
      if (!Evaluate(op.sub, mode, entry)) return false;
      entry->indexed = entry->assigned = false;
      return true;
    }
    case OpCode::kGroupObject: return EvaluateObject(op.sub, mode, entry);
    case OpCode::kUserCall: return UserCall(op, entry);
    case OpCode::kNameCall: return NameCall(op, mode, entry);
    case OpCode::kValueCall: return ValueCall(op, entry);
    case OpCode::kMember: return Member(op, entry);
    case OpCode::kMemberCall: return MemberCall(op, entry);
    case OpCode::kNew: entry->SetInt(0); return true;
    default: return false;
  }
}

bool Interpreter::Step(const Op& op, Mode mode, Entry* top) {
  switch (op.code) {
    case OpCode::kStar: return StarRef(op.node, top);
    case OpCode::kAddressOf: return AddressOf(op.node, top);
    case OpCode::kCast: Cast(op.node, top); return true;
    case OpCode::kNegate: return Negate(op.node, top);
    case OpCode::kUnaryPlus: return true;
    case OpCode::kNotInvert: NotInvert(op.token, top); return true;
    case OpCode::kChoose: return Choose(op, mode, top);
    case OpCode::kStepBefore: return PrePostStep(op.node, op.token, top);
    case OpCode::kStepAfter: pending_.push_back({&op, *top}); return true;
    default: return Fail(op.node, "Stack Underflow Error.");
  }
}

bool Interpreter::StepBinary(const Op& op, Mode mode, Entry* left, Entry* right) {
  switch (op.code) {
    case OpCode::kPlus:
    case OpCode::kMinus: return PlusMinus(op, mode, left, right);
    case OpCode::kArithmetic: return Arithmetic(op, left, right);
    case OpCode::kCompare: Compare(op.token, left, right); return true;
    default: AndOr(op.token, left, right); return true;
  }
}

// The end of an expression: a variable becomes the number or the text it holds.
void Interpreter::FinishResult(Entry* entry) {
  if (!entry->IsVariable()) return;
  char* address = entry->address;
  if (entry->symbol == nullptr || address == nullptr) {
    entry->SetInt(0);
    return;
  }
  if (entry->kind == 2 && !entry->IsDollar()) {
    Materialize(entry);
    entry->token = Tok::NUMBER;
    return;
  }
  const bool char_type = entry->type == Tok::char_ || entry->type == Tok::UCHAR;
  const bool char_array = char_type && entry->kind == 1 && entry->depth == 0 && entry->dimensions == 1;
  if (char_array && !entry->address_taken) {
    entry->token = Tok::STRING;
    entry->text = address;
    entry->value = 0;
    return;
  }
  const bool text = entry->IsDollar() ? StateOf(entry->symbol).holds == Tok::STRING
                                      : char_type && entry->kind == 3 && entry->depth == 1;
  if (text && entry->kind != 1) {
    const char* stored = nullptr;
    std::memcpy(&stored, address, sizeof stored);
    if (CheckedText(stored) != nullptr) {
      entry->SetText(stored);
      return;
    }
  }
  Materialize(entry);
  entry->token = Tok::NUMBER;
}

bool Interpreter::PlusMinus(const Op& op, Mode mode, Entry* left, Entry* right) {
  const bool plus = op.code == OpCode::kPlus;
  if (plus && mode == Mode::kNormal && StringPlus(left, right)) return true;
  Materialize(left);
  Materialize(right);
  if (left->IsDouble() || right->IsDouble()) {
    const double a = AsDouble(*left);
    const double b = AsDouble(*right);
    left->SetDouble(plus ? a + b : a - b);
    return true;
  }
  const auto a = static_cast<uint32_t>(left->value);
  const auto b = static_cast<uint32_t>(right->value);
  left->SetInt(static_cast<int32_t>(plus ? a + b : a - b));
  return true;
}

namespace {

bool IsDivision(Tok token) {
  return token == Tok::SLASH || token == Tok::DIV;
}

template <typename Number>
bool CompareNumbers(Tok token, Number a, Number b) {
  switch (token) {
    case Tok::LT: return a < b;
    case Tok::GT: return a > b;
    case Tok::LE: return a <= b;
    case Tok::GE: return a >= b;
    case Tok::EQ: return a == b;
    default: return a != b;
  }
}

}  // namespace

bool Interpreter::Arithmetic(const Op& op, Entry* left, Entry* right) {
  Materialize(left);
  Materialize(right);
  if (left->IsDouble() || right->IsDouble()) {
    const double a = AsDouble(*left);
    const double b = AsDouble(*right);
    if (op.token == Tok::STAR) {
      left->SetDouble(a * b);
      return true;
    }
    if (!IsDivision(op.token)) return Fail(op.node, "Invalid operation on a double operand");
    if (b == 0.0) return Fail(op.node, "Division by zero");
    left->SetDouble(a / b);
    return true;
  }
  const int32_t b = right->Low();
  if (b == 0 && (IsDivision(op.token) || op.token == Tok::MOD)) return Fail(op.node, "Division by zero");
  left->SetInt(static_cast<int32_t>(IntegerResult(op.token, left->Low(), b)));
  return true;
}

void Interpreter::Compare(Tok token, Entry* left, Entry* right) {
  Materialize(left);
  Materialize(right);
  const bool real = left->IsDouble() || right->IsDouble();
  left->SetInt(real ? CompareNumbers(token, AsDouble(*left), AsDouble(*right))
                    : CompareNumbers(token, left->Low(), right->Low()));
}

// Both sides have run already. An operand that came straight from an index list is the result as
// it stands.
void Interpreter::AndOr(Tok token, Entry* left, Entry* right) {
  if (left->indexed || right->indexed) return;
  Materialize(left);
  Materialize(right);
  const bool a = IsTrue(*left);
  const bool b = IsTrue(*right);
  left->SetInt(token == Tok::AND ? a && b : a || b);
}

bool Interpreter::Negate(const EXPR_NODE* node, Entry* entry) {
  if (entry->indexed) return true;
  if (entry->IsVariable() && entry->kind == 1) return Fail(node, "Address Constant cannot be changed.");
  Materialize(entry);
  if (entry->IsDouble())
    entry->SetDouble(-entry->real);
  else
    entry->SetInt(static_cast<int32_t>(0U - static_cast<uint32_t>(entry->value)));
  return true;
}

void Interpreter::NotInvert(Tok token, Entry* entry) {
  if (token == Tok::NOT) {
    if (entry->token == Tok::STRING) return entry->SetInt(0);
    const bool holds_text = entry->IsVariable() && entry->symbol != nullptr && entry->IsDollar() &&
                            StateOf(entry->symbol).holds == Tok::STRING;
    const bool pointer = entry->IsVariable() && entry->kind == 3;
    Materialize(entry);
    if (pointer || holds_text) return entry->SetInt(entry->value == 0);
    if (entry->IsDouble()) return entry->SetInt(!IsTrue(*entry));
    return entry->SetInt(entry->width == 8 ? entry->value == 0 : entry->Low() == 0);
  }
  Materialize(entry);
  const int32_t value =
      entry->IsDouble() ? static_cast<int32_t>(TruncatedToInteger(entry->real)) : entry->Low();
  entry->SetInt(~value);
}

// The condition of `?:` is taken as it stands: a plain variable has not been read and counts false.
bool Interpreter::ConditionHolds(const Entry& entry) const {
  if (entry.IsDouble()) return IsTrue(entry);
  const int width = entry.width >= 1 && entry.width <= 8 ? entry.width : 4;
  const uint64_t mask = width == 8 ? ~uint64_t{0} : (uint64_t{1} << (8 * width)) - 1;
  return (static_cast<uint64_t>(entry.value) & mask) != 0;
}

bool Interpreter::Choose(const Op& op, Mode mode, Entry* entry) {
  Entry result;
  if (!Evaluate(ConditionHolds(*entry) ? op.sub : op.other, mode, &result)) return false;
  *entry = result;
  entry->assigned = entry->indexed = false;
  return true;
}

}  // namespace vorc
