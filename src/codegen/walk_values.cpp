#include <bit>
#include <cstring>

#include "base/format.h"
#include "base/truncate.h"
#include "codegen/frame.h"
#include "codegen/walk.h"
#include "program/layout.h"

namespace vorc {

namespace {

constexpr int64_t kMostUnrolled = 32;  // copies of a struct; longer ones loop

std::string Quoted(const std::string& before, const SYM_REC* symbol) {
  return before + "'" + symbol->name->c_str() + "'";
}

int32_t AddressOfSymbol(Walk& walk, const SYM_REC* symbol, AddressUse use) {
  Procedure& procedure = walk.procedure;
  const int32_t temp = procedure.NewTemp();
  const auto slot = procedure.frame.find(symbol);
  if (slot != procedure.frame.end()) {
    const bool parameter = slot->second.is_parameter;
    const int32_t distance = parameter ? -slot->second.offset : slot->second.offset;
    const std::string said = use == AddressUse::kArrayArgument ? "address of array " : "address of ";
    if (use == AddressUse::kObject && procedure.context.hook == nullptr)
      CaptureAddressOfObject(walk, temp, distance, symbol);
    else
      CaptureAddressInFrame(walk, temp, distance,
                            Quoted(said + (parameter ? "parameter " : "local "), symbol), symbol);
    return temp;
  }
  if (symbol->OwnerStruct != nullptr && procedure.proto->OwnerClass != nullptr) {
    const MemberResult member = FindStructMember(walk.slot, procedure.proto->OwnerClass, symbol->name);
    CaptureAddNumber(
        walk, temp, ThisPointer(walk), MemberDataOffset(member),
        std::string("offset of '") + symbol->name->c_str() + "' from struct/union/class pointer 'this'");
    return temp;
  }
  CaptureAddressOfGlobal(walk, temp, symbol, use == AddressUse::kArrayArgument);
  return temp;
}

uint64_t MaskOf(const SYM_REC* bit_field) {
  return bit_field->BitFieldWidth >= 64 ? ~uint64_t{0} : (uint64_t{1} << bit_field->BitFieldWidth) - 1;
}

TacOperand Number(Walk& walk, uint64_t number) {
  return NumberOperand(walk.procedure, static_cast<int64_t>(number));
}

int32_t EmitBitFieldBinaryOp(Walk& walk, Tok op, const TacOperand& left, const TacOperand& right) {
  const int32_t result = walk.procedure.NewTemp();
  CapturePlain(walk, op, left, right, result);
  return result;
}

int32_t LoadBitField(Walk& walk, const Operand& place, std::string_view purpose) {
  const int32_t unit = walk.procedure.NewTemp();
  AccessWidth width = AccessOf(walk, place.type);
  width.is_unsigned = true;
  CaptureLoad(walk, unit, place.temp, width, purpose);
  const TacOperand shift = Number(walk, static_cast<uint64_t>(place.bit_field->BitFieldOffset));
  const int32_t shifted = EmitBitFieldBinaryOp(walk, Tok::RIGHTSHIFT, TempOperand(unit), shift);
  return EmitBitFieldBinaryOp(walk, Tok::BITAND, TempOperand(shifted), Number(walk, MaskOf(place.bit_field)));
}

void StoreBitField(Walk& walk, const Operand& place, const TacOperand& value) {
  AccessWidth width = AccessOf(walk, place.type);
  width.is_unsigned = true;
  const int32_t unit = walk.procedure.NewTemp();
  CaptureLoad(walk, unit, place.temp, width);
  const uint64_t mask = MaskOf(place.bit_field);
  const auto offset = static_cast<uint64_t>(place.bit_field->BitFieldOffset);
  const int32_t cut = EmitBitFieldBinaryOp(walk, Tok::BITAND, value, Number(walk, mask));
  const int32_t moved = EmitBitFieldBinaryOp(walk, Tok::LEFTSHIFT, TempOperand(cut), Number(walk, offset));
  const int32_t rest =
      EmitBitFieldBinaryOp(walk, Tok::BITAND, TempOperand(unit), Number(walk, ~(mask << offset)));
  const int32_t merged = EmitBitFieldBinaryOp(walk, Tok::BITOR, TempOperand(rest), TempOperand(moved));
  CaptureStore(walk, merged, place.temp, width);
}

// A real number as the bits that its variable holds.
int64_t BitsOf(double real, const ValueType& type) {
  if (type.basic == Tok::float_ && !type.IsPointer()) return std::bit_cast<int32_t>(static_cast<float>(real));
  return std::bit_cast<int64_t>(real);
}

int64_t Wrapped(int64_t number, AccessWidth width) {
  if (width.bytes >= 8) return number;
  const int shift = 64 - 8 * width.bytes;
  const auto moved = static_cast<uint64_t>(number) << shift;
  return width.is_unsigned ? static_cast<int64_t>(moved >> shift) : static_cast<int64_t>(moved) >> shift;
}

// Cuts a value to its low bits, and extends it to the register again.
Operand Narrowed(Walk& walk, const Operand& operand, AccessWidth width, const ValueType& type) {
  const int32_t result = walk.procedure.NewTemp();
  if (width.is_unsigned) {
    const uint64_t mask = width.bytes >= 8 ? ~uint64_t{0} : (uint64_t{1} << 8 * width.bytes) - 1;
    CapturePlain(walk, Tok::BITAND, ValueOf(walk, operand), Number(walk, mask), result);
  } else {
    const TacOperand shift =
        Number(walk, static_cast<uint64_t>(8 * (walk.procedure.RegisterBytes() - width.bytes)));
    const int32_t high = walk.procedure.NewTemp();
    CapturePlain(walk, Tok::LEFTSHIFT, ValueOf(walk, operand), shift, high);
    CapturePlain(walk, Tok::RIGHTSHIFT, TempOperand(high), shift, result);
  }
  return TempValue(result, type);
}

// A variable real becomes another type, or the other way: its bits would be taken for the value.
void NoteReals(Walk& walk, const Operand& operand, const ValueType& type) {
  const bool constant = operand.IsNumber() || operand.kind == Operand::Kind::kReal;
  const bool real = IsFloatingScalar(operand.type);
  if (constant || (!real && !IsFloatingScalar(type))) return;
  walk.is_inexact |= !real || !IsFloatingScalar(type) || operand.type.basic != type.basic;
}

bool Fits(AccessWidth value, AccessWidth target) {
  if (value.is_unsigned == target.is_unsigned) return value.bytes <= target.bytes;
  return value.is_unsigned && value.bytes < target.bytes;
}

void CopyLoop(Walk& walk, int32_t to, int32_t from, int64_t bytes) {
  Procedure& procedure = walk.procedure;
  const int32_t head_label = procedure.context.label_counter++;
  const int32_t end_label = procedure.context.label_counter++;
  const int32_t at = procedure.NewTemp();
  CaptureClear(walk, at, "bytes of the struct copied so far");
  BasicBlock* before = procedure.current_bb;
  BasicBlock* head = StartBlock(walk, "copy of a struct");
  ThreeAddress_AddBasicBlockPredecesor(before, head);
  CaptureLabel(walk, head_label);
  CaptureCompareWithNumber(walk, TempOperand(at), bytes);
  CaptureJump(walk, ASMOP_JE, LabelString(procedure, end_label));
  BasicBlock* body = StartBlock(walk, "copy of a struct, next byte");
  ThreeAddress_AddBasicBlockPredecesor(head, body);
  const int32_t source = procedure.NewTemp();
  CaptureAdd(walk, source, from, at);
  const int32_t byte = procedure.NewTemp();
  CaptureLoad(walk, byte, source, {1, true});
  const int32_t target = procedure.NewTemp();
  CaptureAdd(walk, target, to, at);
  CaptureStore(walk, byte, target, {1, true});
  CaptureAddNumber(walk, at, at, 1);
  CaptureJump(walk, ASMOP_JMP, LabelString(procedure, head_label));
  AddJumpEdge(body, head);
  BasicBlock* end = StartBlock(walk, "copy of a struct done");
  AddJumpEdge(head, end);
  CaptureLabel(walk, end_label);
}

}  // namespace

int32_t ThisPointer(Walk& walk) {
  const int32_t address = walk.procedure.NewTemp();
  CaptureAddressInFrame(walk, address, -walk.procedure.total_arg_size, "address of 'this'");
  const int32_t pointer = walk.procedure.NewTemp();
  CaptureLoad(walk, pointer, address, {walk.mnemonics.address_bytes, true, true});
  return pointer;
}

Operand NumberValue(int64_t number, Tok basic) {
  Operand operand;
  operand.kind = Operand::Kind::kNumber;
  operand.number = number;
  operand.type = ValueType::Basic(basic);
  return operand;
}

Operand TempValue(int32_t temp, const ValueType& type) {
  Operand operand;
  operand.kind = Operand::Kind::kTemp;
  operand.temp = temp;
  operand.type = type;
  return operand;
}

bool IsFloatingScalar(const ValueType& type) {
  return type.IsReal() && !type.IsPointer() && !type.IsArray();
}

bool IsWideNumber(const Walk& walk, const ValueType& type) {
  const AccessWidth width = AccessOf(walk, type);
  const bool number = !type.IsStruct() && type.function == nullptr && type.basic != Tok::void_;
  return number && width.bytes > 4 && !width.is_address;
}

AccessWidth AccessOf(const Walk& walk, const ValueType& type) {
  return AccessOfType(walk.slot, type.basic, type.IsPointer() || type.IsArray() ? 1 : 0, type.is_unsigned);
}

int32_t AddressOf(Walk& walk, const Operand& operand, AddressUse use) {
  if (operand.kind == Operand::Kind::kPlace) return operand.temp;
  if (operand.kind == Operand::Kind::kSymbol) return AddressOfSymbol(walk, operand.symbol, use);
  return ValueInTemp(walk, operand);
}

TacOperand ValueOf(Walk& walk, const Operand& operand, std::string_view purpose) {
  Procedure& procedure = walk.procedure;
  const bool is_whole = operand.type.IsArray() || operand.type.IsStruct();
  switch (operand.kind) {
    case Operand::Kind::kNumber: {
      TacOperand number = NumberOperand(procedure, operand.number);
      if (!operand.text.empty()) number.text = operand.text;
      return number;
    }
    case Operand::Kind::kReal: {
      const int64_t bits = BitsOf(operand.real, operand.type);
      return NumberOperand(procedure, bits);
    }
    case Operand::Kind::kSymbol:
      return is_whole ? TempOperand(AddressOf(walk, operand)) : SymbolOperand(operand.symbol);
    case Operand::Kind::kPlace: {
      if (is_whole) return TempOperand(operand.temp);
      if (operand.bit_field != nullptr) return TempOperand(LoadBitField(walk, operand, purpose));
      const int32_t temp = procedure.NewTemp();
      CaptureLoad(walk, temp, operand.temp, AccessOf(walk, operand.type), purpose);
      return TempOperand(temp);
    }
    case Operand::Kind::kText: {
      const int32_t temp = procedure.NewTemp();
      const auto label = procedure.context.strings.AddUnnamedStringToDataSection(operand.text, walk.line);
      CaptureAddressOfLabel(walk, temp, label, {});
      return TempOperand(temp);
    }
    case Operand::Kind::kFunction: {
      const int32_t temp = procedure.NewTemp();
      CaptureAddressOfLabel(walk, temp, AsmNameOf(procedure.context, operand.function), {});
      return TempOperand(temp);
    }
    case Operand::Kind::kTemp: return TempOperand(operand.temp);
    case Operand::Kind::kVoid: break;
  }
  return NumberOperand(procedure, 0);
}

int32_t CopyOf(Walk& walk, const Operand& operand) {
  const TacOperand value = ValueOf(walk, operand);
  const int32_t temp = walk.procedure.NewTemp();
  CapturePlain(walk, Tok::ASSIGN, TempOperand(temp), value, kNoTemp);
  return temp;
}

int32_t ValueInTemp(Walk& walk, const Operand& operand) {
  const TacOperand value = ValueOf(walk, operand);
  if (value.kind == TacOperand::Kind::kTemp) return value.temp;
  const int32_t temp = walk.procedure.NewTemp();
  CapturePlain(walk, Tok::ASSIGN, TempOperand(temp), value, kNoTemp);
  return temp;
}

Operand Converted(Walk& walk, const Operand& operand, const ValueType& type) {
  NoteReals(walk, operand, type);
  const bool plain = !type.IsPointer() && !type.IsArray() && !type.IsStruct() && type.function == nullptr;
  if (!plain || operand.kind == Operand::Kind::kText || operand.kind == Operand::Kind::kFunction ||
      operand.type.IsStruct() || IsFloatingScalar(operand.type) || IsFloatingScalar(type)) {
    Operand same = operand;
    if (operand.kind == Operand::Kind::kNumber && IsFloatingScalar(type)) {
      same.kind = Operand::Kind::kReal;
      same.real = static_cast<double>(operand.number);
      same.type = type;
    } else if (operand.kind == Operand::Kind::kReal && plain && !IsFloatingScalar(type)) {
      return NumberValue(TruncatedToInteger(operand.real), type.basic);
    } else if (operand.kind == Operand::Kind::kReal) {
      same.type = type;
    }
    return same;
  }
  const AccessWidth target = AccessOf(walk, type);
  if (operand.IsNumber()) {
    Operand number = NumberValue(Wrapped(operand.number, target), type.basic);
    number.type = type;
    if (number.number == operand.number) number.text = operand.text;
    return number;
  }
  const AccessWidth source = AccessOf(walk, operand.type);
  const int register_bytes = walk.procedure.RegisterBytes();
  const bool whole_register = target.bytes >= register_bytes;
  if (type.basic == Tok::bool_ && operand.type.basic != Tok::bool_) return Boolean(walk, operand);
  if (operand.may_be_wide && source.bytes < register_bytes && target.bytes >= source.bytes) {
    Operand cut = Narrowed(walk, operand, source, operand.type);
    return Converted(walk, cut, type);
  }
  const bool small = operand.type.IsNarrowField() && target.bytes >= 4;
  if (whole_register || small || Fits(source, target)) {
    Operand same = operand;
    if (same.kind == Operand::Kind::kTemp) same.type = type;
    return same;
  }
  return Narrowed(walk, operand, target, type);
}

Operand Boolean(Walk& walk, const Operand& operand, std::string_view purpose) {
  if (operand.is_boolean) return operand;
  if (operand.IsNumber()) return NumberValue(operand.number != 0 ? 1 : 0);
  const Operand value =
      operand.may_be_wide ? Narrowed(walk, operand, AccessOf(walk, operand.type), operand.type) : operand;
  const int32_t result = walk.procedure.NewTemp();
  walk.is_inexact |= IsFloatingScalar(operand.type);
  CapturePlain(walk, Tok::NE, ValueOf(walk, value, purpose), NumberOperand(walk.procedure, 0), result);
  Operand boolean = TempValue(result, ValueType::Basic(Tok::int_));
  boolean.is_boolean = true;
  return boolean;
}

Operand StoreInto(Walk& walk, const Operand& place, const Operand& value) {
  if (place.type.IsStruct()) {
    CopyBytes(walk, AddressOf(walk, place), AddressOf(walk, value), place.type.Size(walk.slot));
    if (place.whole != nullptr) CaptureModifiedStruct(walk, place.whole);
    return place;
  }
  const bool real_target = IsFloatingScalar(place.type);
  NoteReals(walk, value, place.type);
  // Memory cuts a value by itself; a register that is used again must hold the cut value.
  const bool cut = walk.procedure.KeepsValuesInRegisters() || real_target ||
                   value.kind == Operand::Kind::kReal || value.IsNumber() || value.may_be_wide ||
                   place.type.basic == Tok::bool_;
  const Operand converted = cut ? Converted(walk, value, place.type) : value;
  if (place.kind == Operand::Kind::kSymbol && place.bit_field == nullptr) {
    const bool text = value.kind == Operand::Kind::kText && walk.procedure.context.hook == nullptr;
    CapturePlain(walk, Tok::ASSIGN, SymbolOperand(place.symbol),
                 text ? TextOperand(value.text) : ValueOf(walk, converted), kNoTemp);
    return place;
  }
  if (place.bit_field != nullptr) {
    StoreBitField(walk, place, ValueOf(walk, converted));
  } else {
    CaptureStore(walk, ValueInTemp(walk, converted), place.temp, AccessOf(walk, place.type));
  }
  if (place.whole != nullptr) CaptureModifiedStruct(walk, place.whole);
  return place;
}

void CopyBytes(Walk& walk, int32_t to, int32_t from, int64_t bytes) {
  int64_t at = 0;
  const int word = walk.procedure.RegisterBytes();
  if (bytes / word > kMostUnrolled) return CopyLoop(walk, to, from, bytes);
  for (int chunk = word; chunk > 0; chunk /= 2) {
    for (; at + chunk <= bytes; at += chunk) {
      const int32_t source = walk.procedure.NewTemp();
      CaptureAddNumber(walk, source, from, at);
      const int32_t value = walk.procedure.NewTemp();
      CaptureLoad(walk, value, source, {chunk, true});
      const int32_t target = walk.procedure.NewTemp();
      CaptureAddNumber(walk, target, to, at);
      CaptureStore(walk, value, target, {chunk, true});
    }
  }
}

void WalkError(Walk& walk, long code, const std::string& text) {
  walk.failed |= code == 0;
  walk.slot.ErrorAt(walk.line, code, text);
}

}  // namespace vorc
