#include "base/format.h"
#include "base/wrapping.h"
#include "codegen/frame.h"
#include "codegen/walk.h"
#include "program/layout.h"

namespace vorc {

namespace {

const char* NameOrBlank(const Operand& operand) {
  return operand.symbol == nullptr ? "" : operand.symbol->name->c_str();
}

Operand PlaceAt(int32_t address, const ValueType& type, const SYM_REC* symbol) {
  Operand place;
  place.kind = Operand::Kind::kPlace;
  place.temp = address;
  place.type = type;
  place.symbol = symbol;
  return place;
}

/// The distance from an array's start that indices add up to: a constant part and, where one of them
/// is no constant, a temporary.
struct Distance {
  int64_t constant = 0;
  int32_t temp = kNoTemp;
};

void AddIndex(Walk& walk, const Operand& base, const Operand& index, int64_t stride, Distance* distance) {
  if (index.IsNumber()) {
    distance->constant = WrappingSum(distance->constant, WrappingProduct(index.number, stride));
    return;
  }
  Procedure& procedure = walk.procedure;
  if (distance->temp == kNoTemp) {
    distance->temp = procedure.NewTemp();
    CaptureClear(
        walk, distance->temp,
        Format("ResolveIndirection: array index for '%s' Clear EvalStack->indirection_offset_to_add_reg",
               NameOrBlank(base)));
  }
  const Operand exact = Converted(walk, index, ValueType::Basic(Tok::INT64));
  const int32_t product = procedure.NewTemp();
  CaptureMultiplyNumber(walk, product, ValueOf(walk, exact), stride, AccessOf(walk, index.type).is_unsigned);
  CaptureAdd(walk, distance->temp, distance->temp, product);
}

int32_t Displaced(Walk& walk, int32_t address, const Distance& distance) {
  int32_t result = address;
  if (distance.temp != kNoTemp) {
    result = walk.procedure.NewTemp();
    CaptureAdd(walk, result, address, distance.temp);
  }
  if (distance.constant == 0) return result;
  const int32_t moved = walk.procedure.NewTemp();
  CaptureAddNumber(walk, moved, result, distance.constant);
  return moved;
}

// What a pointer to a struct holds.
int32_t PointerOf(Walk& walk, const Operand& pointer) {
  if (pointer.kind != Operand::Kind::kPlace || pointer.bit_field != nullptr)
    return ValueInTemp(walk, pointer);
  const int32_t temp = walk.procedure.NewTemp();
  CapturePointerLoad(walk, temp, pointer.temp, NameOrBlank(pointer));
  return temp;
}

}  // namespace

Operand ResolveIdentifier(Walk& walk, const EXPR_NODE* node) {
  Operand operand;
  if (node->CallWithoutParens) {
    operand.kind = Operand::Kind::kFunction;
    operand.function = node->Function;
    operand.type = ValueType::OfFunction(*node->Function);
    return operand;
  }
  const SYM_REC* symbol = node->Symbol;
  if (symbol == nullptr) {
    WalkError(walk, 0, Format("Undeclared variable '%s'", node->Literal));
    return NumberValue(0);
  }
  operand.kind = Operand::Kind::kSymbol;
  operand.symbol = symbol;
  operand.type = ValueType::OfSymbol(*symbol);
  if (symbol->IsParameter && operand.type.IsArray()) {
    // The parameter holds the address of the array's first element.
    const ValueType element = operand.type.Element();
    operand.type = element.IsArray() ? operand.type : element.Pointer();
    if (element.IsArray())
      operand = PlaceAt(CopyOf(walk,
                               [&] {
                                 Operand pointer = operand;
                                 pointer.type = ValueType::Basic(Tok::char_).Pointer();
                                 return pointer;
                               }()),
                        operand.type, symbol);
  }
  // A bit field of the object that a member function runs on is memory, and so is what is no scalar.
  if (symbol->BitFieldWidth > 0 && symbol->OwnerStruct != nullptr) {
    const ValueType type = operand.type;
    operand = PlaceAt(AddressOf(walk, operand), type, symbol);
    operand.bit_field = symbol;
  }
  return operand;
}

Operand ResolveIndirection(Walk& walk, Operand base, const EXPR_NODE* indices) {
  const EXPR_NODE* index = indices;
  while (index != nullptr) {
    if (!base.type.IsArray() && !base.type.IsPointer()) {
      WalkError(walk, 0, "Illegal array reference.");
      return base;
    }
    Distance distance;
    const SYM_REC* symbol = base.symbol;
    const bool array = base.type.IsArray();
    const int32_t address = array ? AddressOf(walk, base) : ValueInTemp(walk, base);
    do {
      const Operand value = EvalExpression(walk, index);
      const bool beyond = base.type.IsArray() && !base.type.dimensions.empty() && value.IsNumber() &&
                          value.number >= base.type.dimensions[0] && base.type.dimensions[0] > 0;
      const bool open = symbol != nullptr && symbol->IsParameter;
      if (beyond && !open) walk.slot.WarningAt(walk.line, "Array index out of range!!");
      base.type = base.type.Element();
      AddIndex(walk, base, value, base.type.Size(walk.slot), &distance);
      index = index->NextDimension;
    } while (array && index != nullptr && base.type.IsArray());
    const SYM_REC* whole = array ? base.whole : nullptr;
    base = PlaceAt(Displaced(walk, address, distance), base.type, symbol);
    base.whole = whole;
  }
  return base;
}

Operand ResolveStarRef(Walk& walk, const Operand& operand, int stars) {
  Operand place = operand;
  for (int i = 0; i < stars; ++i) {
    if (place.kind == Operand::Kind::kFunction) continue;
    if (!place.type.IsArray() && !place.type.IsPointer()) {
      WalkError(walk, 0,
                place.IsConstant() ? "Improper use of '*' in the expression." : "Illegal indirection '*'.");
      return place;
    }
    if (place.type.function != nullptr && place.type.depth == 0) continue;
    const int32_t address = place.type.IsArray() ? AddressOf(walk, place) : ValueInTemp(walk, place);
    place = PlaceAt(address, place.type.Element(), place.symbol);
  }
  return place;
}

Operand ResolveBitAnd_Address(Walk& walk, const Operand& operand) {
  if (operand.kind == Operand::Kind::kFunction) return operand;
  if (!operand.IsPlace() || operand.bit_field != nullptr) {
    WalkError(walk, 0, "Improper use of '&' in the expression.");
    return operand;
  }
  if (operand.kind == Operand::Kind::kSymbol) walk.procedure.address_taken.insert(operand.symbol);
  return TempValue(AddressOf(walk, operand), operand.type.Pointer());
}

MemberResult FindMember(Walk& walk, const STRUCT_REC& record, const Name* name) {
  MemberResult member = FindStructMember(walk.slot, &record, name);
  if (!member) {
    WalkError(walk, 0,
              Format("'%s' is not a member of struct/class/union '%s'", name->c_str(), record.name->c_str()));
    return {};
  }
  const Reach reach = MemberReach(member, &record, walk.procedure.proto);
  if (reach == Reach::kAllowed) return member;
  WalkError(walk, 0,
            Format("'%s' cannot access %s member of struct/class/union '%s'", name->c_str(),
                   reach == Reach::kPrivate ? "private" : "protected", record.name->c_str()));
  return {};
}

Operand VerifyMember(Walk& walk, const Operand& object, const EXPR_NODE* node) {
  const bool arrow = node->Next->Token == Tok::POINTER;
  const char* name = node->name->c_str();
  const char* object_name = NameOrBlank(object);
  if (object.type.record == nullptr || object.type.IsArray() || object.type.depth > 1) {
    WalkError(walk, 0, Format("'%s' is not a struct/class/union.", object_name));
    return NumberValue(0);
  }
  const MemberResult member = FindMember(walk, *object.type.record, node->name);
  if (!member || member.Symbol == nullptr) return NumberValue(0);
  const bool pointer = object.type.depth == 1;
  if (pointer != arrow) {
    const char* text =
        object_name[0] == '\0' ? (pointer ? "Use of '->' instead of '.'" : "Use of '.' instead of '->'")
        : pointer
            ? "'%s' is a pointer to struct/union/class variable. Use '->' instead of '.' at the left of '%s'"
            : "'%s' is a struct/union/class variable. Use '.' instead of '->' at the left of '%s'";
    WalkError(walk, 0, Format(text, object_name, name));
    return NumberValue(0);
  }
  const int32_t base = pointer ? PointerOf(walk, object) : AddressOf(walk, object);
  const int32_t address = walk.procedure.NewTemp();
  CaptureAddNumber(walk, address, base, MemberDataOffset(member),
                   Format("offset of '%s' from struct/union/class %s '%s'", name, pointer ? "pointer" : "var",
                          object_name));
  Operand place = PlaceAt(address, ValueType::OfSymbol(*member.Symbol), member.Symbol);
  if (member.Symbol->BitFieldWidth > 0) place.bit_field = member.Symbol;
  if (!pointer) place.whole = object.kind == Operand::Kind::kSymbol ? object.symbol : object.whole;
  return place;
}

}  // namespace vorc
