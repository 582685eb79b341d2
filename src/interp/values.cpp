#include <algorithm>
#include <cstring>

#include "base/format.h"
#include "base/trace.h"
#include "base/truncate.h"
#include "interp/interpreter.h"
#include "interp/numbers.h"
#include "program/layout.h"
#include "program/operators.h"

namespace vorc {

namespace {

constexpr size_t kSmallestRingText = 256;
// A text that doubles itself in a loop ends here, with an error, and not with the host's memory.
constexpr size_t kLongestText = size_t{32} << 20;

template <typename T>
T Read(const char* address) {
  T value;
  std::memcpy(&value, address, sizeof value);
  return value;
}

template <typename T>
void Write(char* address, T value) {
  std::memcpy(address, &value, sizeof value);
}

bool IsUnsignedType(Tok type) {
  switch (type) {
    case Tok::UINT32:
    case Tok::UINT64:
    case Tok::UINT128:
    case Tok::UINT256: return true;
    default: return false;
  }
}

bool IsRealType(Tok type) {
  return type == Tok::float_ || type == Tok::double_ || type == Tok::longdouble;
}
bool IsCharType(Tok type) {
  return type == Tok::char_ || type == Tok::UCHAR;
}

uint64_t FieldMask(const SYM_REC* symbol) {
  return symbol->BitFieldWidth >= 64 ? ~uint64_t{0} : (uint64_t{1} << symbol->BitFieldWidth) - 1;
}

uint64_t ReadBytes(const char* address, int size) {
  uint64_t value = 0;
  std::memcpy(&value, address, static_cast<size_t>(size));
  return value;
}

std::string NumberText(const Entry& entry, bool wide) {
  if (entry.IsDouble()) return Format("%.15g", entry.real);
  return wide ? Format("%lld", static_cast<long long>(entry.value)) : Format("%d", entry.Low());
}

}  // namespace

int32_t Interpreter::ElementSize(const Entry& entry) {
  if (entry.depth > 0) return 8;
  if (entry.record != nullptr) return GetObjectStructSize(entry.record);
  const int32_t size = GetBasicTypeSize(slot_, entry.type);
  return size == 0 ? 4 : size;
}

// Reads the variable behind an entry into its value. Numbers and texts stay as they are.
void Interpreter::Materialize(Entry* entry) {
  if (!entry->IsVariable() || entry->address == nullptr) return;
  VORC_TRACE("DIAG: materialize name=%s addr=%p width=%d type=%d\n",
             entry->symbol == nullptr ? "?" : entry->symbol->name->c_str(),
             static_cast<void*>(entry->address), ElementSize(*entry), static_cast<int>(entry->type));
  if (entry->kind == 2 && entry->depth == 0)
    return LoadScalar(entry, entry->address, entry->type, entry->symbol);
  if (entry->kind == 3) {
    entry->value = Read<int64_t>(entry->address);
    entry->width = 8;
    entry->number_type = Tok::INT64;
    return;
  }
  // An array's name stands for its first bytes.
  entry->value = Read<int32_t>(entry->address);
  entry->width = 4;
  entry->number_type = Tok::int_;
}

void Interpreter::LoadScalar(Entry* entry, const char* address, Tok type, const SYM_REC* symbol) {
  entry->number_type = type;
  switch (type) {
    case Tok::int_:
    case Tok::INT32:
      entry->width = 4;
      entry->value = Read<int32_t>(address);
      entry->is_unsigned = symbol != nullptr && (symbol->StorageType & UNSIGNED_VAR) != 0;
      if (entry->is_unsigned) entry->value &= 0xffffffffLL;
      break;
    case Tok::float_:
      entry->number_type = Tok::double_;
      entry->width = 8;
      entry->real = static_cast<double>(Read<float>(address));
      return;
    case Tok::double_:
    case Tok::longdouble:
      entry->number_type = Tok::double_;
      entry->width = 8;
      entry->real = Read<double>(address);
      return;
    case Tok::dollar:
      entry->width = 8;
      entry->value = Read<int64_t>(address);
      if (symbol != nullptr && StateOf(symbol).holds == Tok::double_) entry->number_type = Tok::double_;
      return;
    default: {
      // Narrow integers are read without their sign.
      const int32_t size = GetBasicTypeSize(slot_, type);
      entry->width = size == 0 ? 4 : size;
      entry->is_unsigned = IsUnsignedType(type);
      entry->value = static_cast<int64_t>(ReadBytes(address, entry->width > 8 ? 8 : entry->width));
      if (size == 0) entry->value = static_cast<int32_t>(entry->value);
    }
  }
  if (symbol != nullptr && symbol->BitFieldWidth > 0) {
    const uint64_t unit = ReadBytes(address, entry->width);
    entry->value = static_cast<int64_t>((unit >> symbol->BitFieldOffset) & FieldMask(symbol));
  }
}

// A text that the script may read, or null.
const char* Interpreter::CheckedText(const char* text) const {
  return text != nullptr && memory_.Contains(text, 1) ? text : nullptr;
}

const char* Interpreter::OperandText(const Entry& entry, bool* from_dollar) const {
  if (entry.token == Tok::STRING) return entry.text == nullptr ? "" : entry.text;
  if (!entry.IsVariable() || entry.symbol == nullptr || entry.address == nullptr) return nullptr;
  if (entry.IsDollar()) {
    if (StateOf(entry.symbol).holds != Tok::STRING) return nullptr;
    *from_dollar = true;
  } else if (!IsCharType(entry.type)) {
    return nullptr;
  } else if (entry.kind == 1 && entry.depth == 0 && entry.dimensions == 1 && !entry.address_taken) {
    return entry.address;
  } else if (entry.kind != 3 || entry.depth != 1) {
    return nullptr;
  }
  const char* text = CheckedText(Read<const char*>(entry.address));
  return text == nullptr ? "" : text;
}

bool Interpreter::TextFits(size_t length) {
  if (length <= kLongestText) return true;
  slot_.ErrorAt(current_line_, 0, Format("A text is longer than %zu bytes.", kLongestText));
  return false;
}

char* Interpreter::GrowSlot(TextSlot* slot, size_t needed) {
  if (slot->capacity >= needed) return slot->buffer;
  size_t capacity = slot->capacity == 0 ? kSmallestRingText : slot->capacity;
  while (capacity < needed) capacity *= 2;
  char* buffer = memory_.AllocateText(capacity);
  if (buffer == nullptr) return nullptr;
  *slot = {buffer, capacity};
  return buffer;
}

// Both texts, one behind the other, in the next buffer of the ring. A part may lie in that buffer.
std::string_view Interpreter::RingText(std::string_view left, std::string_view right) {
  TextSlot* slot = &concat_ring_.slots[concat_ring_.next];
  concat_ring_.next = (concat_ring_.next + 1) % TextRing::kSlots;
  const size_t total = left.size() + right.size();
  if (!TextFits(total)) return "";
  char* buffer = GrowSlot(slot, total + 1);
  if (buffer == nullptr) {
    slot_.ErrorAt(current_line_, 0, "ExecSystemFunction: Not enough system memory");
    return "";
  }
  if (!right.empty()) std::memmove(buffer + left.size(), right.data(), right.size());
  if (!left.empty() && left.data() != buffer) std::memmove(buffer, left.data(), left.size());
  buffer[total] = '\0';
  joined_ = {buffer, total, memory_.texts_reached()};
  joined_left_ = {left.data(), left.size(), memory_.texts_reached()};
  return {buffer, total};
}

// What a typeless variable holds, measured only if it may have changed.
std::string_view Interpreter::TypelessText(const SYM_REC* symbol, const char* stored) const {
  const KnownText& known = StateOf(symbol).known;
  return Holds(known, stored) ? std::string_view(stored, known.length) : std::string_view(stored);
}

std::string_view Interpreter::LengthOf(const char* text) const {
  return Holds(joined_, text) ? std::string_view(text, joined_.length) : std::string_view(text);
}

const char* Interpreter::RetainReturnedString(const char* text) {
  if (text == nullptr) return nullptr;
  TextSlot* slot = &return_ring_.slots[return_ring_.next];
  return_ring_.next = (return_ring_.next + 1) % TextRing::kSlots;
  const size_t length = std::strlen(text);
  char* buffer = GrowSlot(slot, length + 1);
  if (buffer == nullptr) return text;
  std::memmove(buffer, text, length + 1);
  return buffer;
}

// Joins texts. A number takes part only beside a typeless variable's text. False if neither side
// makes this a join.
bool Interpreter::StringPlus(Entry* left, Entry* right) {
  if (left->token == Tok::NUMBER && right->token == Tok::NUMBER) return false;
  bool from_dollar = false;
  const char* a = OperandText(*left, &from_dollar);
  const char* b = OperandText(*right, &from_dollar);
  if (a == nullptr && b == nullptr) return false;
  std::string number;
  if (a == nullptr || b == nullptr) {
    if (!from_dollar) return false;
    Entry* other = a == nullptr ? left : right;
    Materialize(other);
    number = NumberText(*other, false);
    (a == nullptr ? a : b) = number.c_str();
  }
  const auto view = [this](const Entry* entry, const char* text) {
    const bool known = entry->IsVariable() && entry->symbol != nullptr && entry->IsDollar();
    return known ? TypelessText(entry->symbol, text) : LengthOf(text);
  };
  left->SetText(RingText(view(left, a), view(right, b)).data());
  return true;
}

// The sum of `$s = $s + text` is made where it goes if there is room, so that a text which grows by pieces is
// not copied for each.
bool Interpreter::AppendInPlace(const Op& op, const Entry& target, Entry* left, Entry* right) {
  if (op.code != OpCode::kPlus || op.last) return false;
  const Op& next = (&op)[1];
  if (next.code != OpCode::kAssign || !next.last || !target.IsVariable() || !target.IsDollar()) return false;
  if (!left->IsVariable() || left->symbol != target.symbol || left->address != target.address) return false;
  SymbolState& state = StateOf(left->symbol);
  bool from_dollar = false;
  const char* text = OperandText(*right, &from_dollar);
  const char* stored = OperandText(*left, &from_dollar);
  if (text == nullptr || stored == nullptr || stored != state.text) return false;
  const size_t start = TypelessText(left->symbol, stored).size();
  const bool typeless = right->IsVariable() && right->symbol != nullptr && right->IsDollar();
  const std::string_view addition = typeless ? TypelessText(right->symbol, text) : LengthOf(text);
  const size_t total = start + addition.size();
  if (total >= state.text_capacity || !TextFits(total)) return false;
  std::memmove(state.text + start, addition.data(), addition.size());
  state.text[total] = '\0';
  joined_ = {state.text, total, memory_.texts_reached()};
  state.known = joined_;
  joined_left_ = {};
  left->SetText(state.text);
  return true;
}

void Interpreter::StoreDollarText(SYM_REC* symbol, char* address, std::string_view text) {
  if (!TextFits(text.size())) return;
  SymbolState& state = StateOf(symbol);
  if (state.text == nullptr || state.text_capacity <= text.size()) {
    // Twice the room, so that a text that grows by pieces is not moved for each.
    const size_t capacity = text.size() < kSmallestRingText / 2 ? text.size() + 16 : text.size() * 2;
    char* buffer = memory_.AllocateText(capacity + 1);
    if (buffer == nullptr) {
      slot_.ErrorAt(current_line_, 0, "ExecSystemFunction: Not enough system memory");
      return;
    }
    if (!text.empty()) std::memcpy(buffer, text.data(), text.size());
    state.text = buffer;
    state.text_capacity = static_cast<uint32_t>(std::min<size_t>(capacity, UINT32_MAX));
  } else if (Holds(joined_, text.data()) && Holds(joined_left_, state.text)) {
    // What was joined starts with what is here already.
    const size_t start = joined_left_.length;
    std::memcpy(state.text + start, text.data() + start, text.size() - start);
  } else if (!text.empty() && text.data() != state.text) {
    std::memmove(state.text, text.data(), text.size());
  }
  state.text[text.size()] = '\0';
  state.known = {state.text, text.size(), memory_.texts_reached()};
  joined_left_ = {};
  Write<const char*>(address, state.text);
  state.holds = Tok::STRING;
}

void Interpreter::StoreInteger(const Entry& target, int64_t value) {
  const SYM_REC* symbol = target.symbol;
  int32_t size = GetBasicTypeSize(slot_, target.type);
  if (size == 0) size = 4;
  if (symbol->BitFieldWidth > 0 && size <= 8) {
    const uint64_t mask = FieldMask(symbol) << symbol->BitFieldOffset;
    const uint64_t unit = ReadBytes(target.address, size);
    value = static_cast<int64_t>((unit & ~mask) |
                                 ((static_cast<uint64_t>(value) << symbol->BitFieldOffset) & mask));
  }
  std::memcpy(target.address, &value, static_cast<size_t>(size < 8 ? size : 8));
  if (size > 8) std::memset(target.address + 8, value < 0 ? 0xff : 0, static_cast<size_t>(size - 8));
}

// Stores a number in the target's own form: its width, extended from the value.
void Interpreter::StoreNumber(const Entry& target, const Entry& source) {
  if (target.kind == 3) {
    const int64_t pointer = source.kind == 1 && source.address != nullptr && source.token != Tok::NUMBER
                                ? reinterpret_cast<int64_t>(source.address)
                                : source.value;
    return Write(target.address, pointer);
  }
  if (target.IsDollar()) {
    Write<int64_t>(target.address, source.value);
    StateOf(target.symbol).holds = source.number_type == Tok::NOTOKEN || source.number_type == Tok::dollar
                                       ? Tok::int_
                                       : source.number_type;
    return;
  }
  if (IsRealType(target.type)) {
    const double value = source.IsDouble()   ? source.real
                         : source.width == 8 ? static_cast<double>(source.value)
                                             : static_cast<double>(source.Low());
    if (target.type == Tok::float_)
      Write(target.address, static_cast<float>(value));
    else
      Write(target.address, value);
    return;
  }
  StoreInteger(target, source.IsDouble() ? TruncatedToInteger(source.real) : source.value);
}

void Interpreter::Assign(Entry* left, Entry* right, bool last) {
  if (left->IsPlace()) {
    const bool dollar = left->IsDollar();
    bool from_dollar = false;
    const char* text = dollar || left->kind == 3 ? OperandText(*right, &from_dollar) : nullptr;
    const bool null_variable = text != nullptr && right->IsVariable() && right->kind != 1 &&
                               Read<const char*>(right->address) == nullptr;
    if (text != nullptr && !null_variable) {
      if (dollar)
        StoreDollarText(left->symbol, left->address,
                        from_dollar && right->symbol != nullptr && right->IsDollar()
                            ? TypelessText(right->symbol, text)
                            : LengthOf(text));
      else
        Write<const char*>(left->address, text);
      right->SetText(text);
    } else if (left->record != nullptr && left->kind == 2 && right->record == left->record &&
               right->kind == 2 && right->address != nullptr) {
      std::memmove(left->address, right->address, static_cast<size_t>(ElementSize(*left)));
    } else {
      const bool address = right->kind == 1 && right->IsVariable();
      Materialize(right);
      StoreNumber(*left, *right);
      if (right->IsVariable() && !address) right->token = Tok::NUMBER;
    }
  }
  *left = *right;
  left->indexed = false;
  left->assigned = last && left->token != Tok::IDENTIFIER && left->token != Tok::DOLLAR_IDENTIFIER;
}

// `+=` with a text on either side. `done` tells whether the operator was carried out.
bool Interpreter::CompoundText(const Op& op, Entry* left, Entry* right, bool* done) {
  SYM_REC* symbol = left->symbol;
  const bool holds_text = left->IsDollar() && StateOf(symbol).holds == Tok::STRING;
  bool from_dollar = false;
  const char* text = OperandText(*right, &from_dollar);
  *done = holds_text || text != nullptr;
  if (!*done || op.token != Tok::PLUS_EQ || !left->IsDollar()) return true;
  std::string right_number;
  if (text == nullptr) {
    Materialize(right);
    right_number = NumberText(*right, true);
    text = right_number.c_str();
  }
  const std::string_view addition = LengthOf(text);
  if (holds_text) {
    SymbolState& state = StateOf(symbol);
    const char* stored = CheckedText(Read<const char*>(left->address));
    const std::string_view old = stored == nullptr ? std::string_view() : TypelessText(symbol, stored);
    if (!TextFits(old.size() + addition.size())) return false;
    const bool in_place =
        stored == state.text && stored != nullptr && old.size() + addition.size() < state.text_capacity;
    if (in_place) {
      std::memmove(state.text + old.size(), addition.data(), addition.size());
      state.text[old.size() + addition.size()] = '\0';
      state.known = {state.text, old.size() + addition.size(), memory_.texts_reached()};
      joined_left_ = {};
    } else {
      StoreDollarText(symbol, left->address, RingText(old, addition));
    }
  } else {
    Materialize(left);
    StoreDollarText(symbol, left->address, RingText(NumberText(*left, false), addition));
  }
  left->SetText(Read<const char*>(left->address));
  left->assigned = op.last;
  return true;
}

namespace {

struct CompoundForm {
  int64_t integer;
  double real;
  bool is_real;
};

CompoundForm FormOf(const Entry& entry) {
  if (entry.IsDouble()) return {TruncatedToInteger(entry.real), entry.real, true};
  return {entry.value, static_cast<double>(entry.value), false};
}

bool RealResult(Tok plain, double a, double b, double* result) {
  switch (plain) {
    case Tok::STAR: *result = a * b; return true;
    case Tok::MINUS: *result = a - b; return true;
    case Tok::PLUS: *result = a + b; return true;
    case Tok::SLASH: *result = a / b; return true;
    default: return false;
  }
}

}  // namespace

bool Interpreter::CompoundAssign(const Op& op, Entry* left, Entry* right) {
  if (!left->IsPlace() || left->kind != 2) return true;
  bool done = false;
  if (!CompoundText(op, left, right, &done)) return false;
  if (done) return true;
  Materialize(right);
  const Entry place = *left;
  Materialize(left);
  // Unlike other reads, this one keeps the sign of a narrow integer.
  if (!left->IsDouble() && left->width == 1 && place.type != Tok::UCHAR)
    left->value = static_cast<int8_t>(left->value);
  if (!left->IsDouble() && left->width == 2) left->value = static_cast<int16_t>(left->value);
  if (!left->IsDouble() && left->width == 4) left->value = left->Low();
  const CompoundForm a = FormOf(*left);
  const CompoundForm b = FormOf(*right);
  const Tok plain = OperatorOf(op.token).plain;
  double real = 0.0;
  if ((a.is_real || b.is_real) && RealResult(plain, a.real, b.real, &real)) {
    left->SetDouble(real);
    StoreNumber(place, *left);
  } else {
    const bool divides = plain == Tok::SLASH || plain == Tok::MOD;
    if (divides && b.integer == 0) return Fail(op.node, "Division by zero");
    const int64_t value = IntegerResult(plain, a.integer, b.integer);
    left->SetInt(0);
    left->value = place.IsDollar() ? static_cast<int32_t>(value) : value;
    // The stored number is as wide as its target; as a value it is an int.
    Entry wide = *left;
    if (IsRealType(place.type) && place.depth == 0) wide.SetDouble(static_cast<double>(value));
    StoreNumber(place, wide);
  }
  left->assigned = op.last;
  return true;
}

bool Interpreter::PrePostStep(const EXPR_NODE* node, Tok token, Entry* entry) {
  if (!entry->IsVariable()) return Fail(node, "Invalid operation on a constant number");
  if (entry->kind == 1) return Fail(node, "Address Constant cannot be changed.");
  if (entry->kind == 3 || entry->address == nullptr || entry->symbol == nullptr) return true;
  const int step = token == Tok::PLUS_PLUS ? 1 : -1;
  const bool real =
      IsRealType(entry->type) || (entry->IsDollar() && StateOf(entry->symbol).holds == Tok::double_);
  if (real) {
    // One rule for the three real types: a double's eight bytes, whatever the variable's own width.
    if (!memory_.Reach(entry->address, sizeof(double))) return NullPointer(node, *entry, entry->address);
    const double value = Read<double>(entry->address) + step;
    Write(entry->address, value);
    entry->real = value;
    entry->number_type = Tok::double_;
    entry->width = 8;
  } else {
    LoadScalar(entry, entry->address, entry->type, entry->symbol);
    const auto value =
        static_cast<int64_t>(static_cast<uint64_t>(entry->value) + static_cast<uint64_t>(int64_t{step}));
    if (entry->IsDollar())
      Write(entry->address, value);
    else
      StoreInteger(*entry, value);
    LoadScalar(entry, entry->address, entry->type, entry->symbol);
  }
  return true;
}

}  // namespace vorc
