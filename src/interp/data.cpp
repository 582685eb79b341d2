#include <cstring>

#include "base/format.h"
#include "interp/interpreter.h"
#include "program/constants.h"
#include "program/layout.h"

namespace vorc {

namespace {

// A subscript that runs a little over the end, or a real stepped as eight bytes, stays in here.
constexpr size_t kSlack = 16;

}  // namespace

void Interpreter::AllocateData(SYM_REC* symbol) {
  if (!slot_.IsScript() || StateOf(symbol).data != nullptr || symbol->IsParameter) return;
  if ((symbol->StorageType & EXTERN_VAR) != 0) {
    // An `extern` inside a function is the file's variable of that name.
    SYM_REC* global = FindInScope(slot_, &slot_.Globals, symbol->name).Symbol();
    if (global != nullptr && global != symbol && !global->ImplicitExtern) {
      AllocateData(global);
      StateOf(symbol).data = StateOf(global).data;
      return;
    }
  }
  const bool open = symbol->Shape.UnsizedFirstDimension;
  const auto size = static_cast<size_t>(open ? kOpenArrayRoom : GetDeclaredDataSize(slot_, symbol));
  StateOf(symbol).data = memory_.Allocate(size + kSlack);
  if (StateOf(symbol).data != nullptr) return;
  slot_.ErrorAt(symbol->Line, 0, Format("Variable '%s' does not fit into memory.", symbol->name->c_str()));
  StateOf(symbol).data = memory_.stack();
}

int64_t Interpreter::RoomOf(const SYM_REC* symbol) {
  if (StateOf(symbol).data == nullptr) return kLargestType;
  return symbol->Shape.UnsizedFirstDimension ? kOpenArrayRoom : GetDeclaredDataSize(slot_, symbol);
}

char* Interpreter::AddressOfSymbol(const SYM_REC* symbol) const {
  if (symbol->IsParameter) return Word(frame_.base + symbol->FrameOffset);
  if (symbol->IsLocal) return Word(frame_.base - symbol->FrameOffset);
  return StateOf(symbol).data;
}

// The value of a constant initializer as an operand.
bool Interpreter::ConstantEntry(const InitializerLeaf& leaf, Entry* entry) {
  ConstantValue value;
  if (!EvalConstantExpression(slot_, leaf.element->Expression, &value)) return false;
  switch (value.kind) {
    case ConstantValue::Kind::kReal: entry->SetDouble(value.real); break;
    case ConstantValue::Kind::kText: entry->SetText(memory_.CopyText(value.text)); break;
    default: {
      int64_t number = value.integer;
      if (value.kind == ConstantValue::Kind::kFunction) number = reinterpret_cast<int64_t>(value.function);
      if (value.symbol != nullptr) {
        AllocateData(value.symbol);
        number += reinterpret_cast<int64_t>(StateOf(value.symbol).data);
      }
      entry->SetInt(0);
      entry->value = number;
      entry->width = 8;
      entry->number_type = Tok::INT64;
    }
  }
  return true;
}

void Interpreter::StoreLeaf(const InitializerLeaf& leaf, char* base, const Entry& value) {
  char* address = base + leaf.offset;
  if (leaf.text_room > 0 && value.token == Tok::STRING) {
    const size_t length = std::strlen(value.text);
    const auto room = static_cast<size_t>(leaf.text_room);
    std::memcpy(address, value.text, length < room ? length : room);
    return;
  }
  Entry target;
  target.token = Tok::IDENTIFIER;
  target.symbol = const_cast<SYM_REC*>(leaf.symbol);
  target.address = address;
  target.type = leaf.symbol->ValueType;
  const bool pointer = leaf.symbol->TotalDepth > 0 || leaf.symbol->IsFunctionPointer;
  target.kind = pointer ? 3 : 2;
  if (value.token == Tok::STRING) {
    if (pointer)
      std::memcpy(address, &value.text, sizeof value.text);
    else if (target.IsDollar())
      StoreDollarText(target.symbol, address, value.text);
    return;
  }
  StoreNumber(target, value);
}

void Interpreter::InitializeData(SYM_REC* symbol) {
  if (!slot_.IsScript() || failed()) return;
  AllocateData(symbol);
  const auto store = [&](const InitializerLeaf& leaf) {
    Entry value;
    if (ConstantEntry(leaf, &value)) StoreLeaf(leaf, StateOf(symbol).data, value);
  };
  InitializerWalk(slot_, store).Run(symbol);
}

// A local array or struct gets its values each time its declaration is reached.
bool Interpreter::FillLocal(const STATEMENT_BLOCK* statement) {
  SYM_REC* symbol = statement->Symbol;
  if (symbol->Initializer.First == nullptr) return true;
  char* base = AddressOfSymbol(symbol);
  if (base == nullptr) return true;
  std::memset(base, 0, static_cast<size_t>(GetDeclaredDataSize(slot_, symbol)));
  const auto store = [&](const InitializerLeaf& leaf) {
    Entry value;
    Code* code = decoder_.Decode(leaf.element->Expression);
    if (!failed() && Evaluate(code, Mode::kNormal, &value)) StoreLeaf(leaf, base, value);
  };
  InitializerWalk(slot_, store).Run(symbol);
  return !failed();
}

}  // namespace vorc
