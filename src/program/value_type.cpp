#include "program/value_type.h"

#include "program/layout.h"

namespace vorc {

namespace {

constexpr TokenList kUnsignedTypes = {Tok::UINT16, Tok::UINT32,  Tok::UINT64, Tok::UINT128, Tok::UINT8,
                                      Tok::UINT4,  Tok::UINT256, Tok::UCHAR,  Tok::bool_};

}  // namespace

ValueType ValueType::OfSymbol(const SYM_REC& symbol) {
  ValueType type;
  type.basic = symbol.ValueType;
  type.record = symbol.Struct;
  type.function = symbol.IsFunctionPointer ? symbol.FunctionPointer : nullptr;
  type.depth = symbol.TotalDepth;
  type.dimensions = {symbol.Shape.Dimensions, static_cast<size_t>(symbol.Shape.DimensionCount)};
  type.is_unsigned = (symbol.StorageType & UNSIGNED_VAR) != 0 || kUnsignedTypes.Has(symbol.ValueType);
  type.field_bits = symbol.BitFieldWidth;
  return type;
}

ValueType ValueType::OfType(const TypeSpec& declared) {
  ValueType type;
  type.depth = declared.PointerDepth;
  type.is_unsigned = (declared.StorageType & UNSIGNED_VAR) != 0;
  const TypeSpec* at = &declared;
  for (; at->Typedef != nullptr; at = at->Typedef) {
    const TYPEDEF_REC* record = at->Typedef;
    // Behind a pointer the array that a typedef stands for is gone.
    if (type.depth == 0 && type.dimensions.empty())
      type.dimensions = {record->Shape.Dimensions, static_cast<size_t>(record->Shape.DimensionCount)};
    if (record->Function != nullptr) type.function = record->Function;
    type.depth += record->PointerDepth;
    type.is_unsigned |= (record->StorageType & UNSIGNED_VAR) != 0;
  }
  type.basic = at->Enum != nullptr || at->BasicType == Tok::enum_ ? Tok::int_ : at->BasicType;
  type.record = at->Struct;
  type.is_unsigned |= kUnsignedTypes.Has(type.basic);
  return type;
}

ValueType ValueType::OfCast(const CAST& cast) {
  TypeSpec declared;
  declared.BasicType = cast.TypeToken;
  declared.Typedef = cast.Typedef;
  declared.Struct = cast.Typedef == nullptr ? cast.Struct : nullptr;
  ValueType type = OfType(declared);
  type.depth = cast.PointerDepth;  // those of the typedef stand in it already
  if (cast.CastType == CAST_FUNC_PTR_TYPE) type.function = cast.Function;
  return type;
}

ValueType ValueType::OfFunction(const FUNCPROTO_REC& function) {
  ValueType type = OfType(function.ReturnType);
  type.function = &function;
  return type;
}

ValueType ValueType::OfText(std::string_view text) {
  ValueType type = Basic(Tok::char_);
  type.text_bytes = static_cast<int64_t>(text.size()) + 1;
  return type;
}

ValueType ValueType::OfNumber(const EXPR_NODE& node) {
  const int64_t value = node.NumberValue;
  const bool has_sign = node.LiteralLength > 0 && node.Literal[0] == '-';  // that of an enumerated value
  if (value < 0 && !has_sign) return Basic(node.Token == Tok::HEXNUMBER ? Tok::UINT64 : Tok::INT64);
  if (value >= INT32_MIN && value <= INT32_MAX) return Basic(Tok::int_);
  return Basic(node.Token == Tok::HEXNUMBER && value <= UINT32_MAX ? Tok::UINT32 : Tok::INT64);
}

ValueType ValueType::Basic(Tok basic) {
  ValueType type;
  type.basic = basic;
  type.is_unsigned = kUnsignedTypes.Has(basic);
  return type;
}

bool ValueType::IsReal() const {
  const bool real = basic == Tok::float_ || basic == Tok::double_ || basic == Tok::longdouble;
  return real && !IsPointer() && !IsArray();
}

ValueType ValueType::Element() const {
  ValueType type = *this;
  if (text_bytes > 0)
    type.text_bytes = 0;
  else if (IsArray())
    type.dimensions = dimensions.subspan(1);
  else if (depth > 0)
    --type.depth;
  return type;
}

ValueType ValueType::Pointer() const {
  ValueType type = *this;
  if (IsArray()) type = Element();
  ++type.depth;
  return type;
}

ValueType ValueType::Member(const C_SLOT& slot, const Name* name) const {
  if (record == nullptr) return {};
  const MemberResult member = FindStructMember(slot, record, name);
  return member.Symbol == nullptr ? ValueType() : OfSymbol(*member.Symbol);
}

int64_t ValueType::Size(const C_SLOT& slot) const {
  int64_t size = IsPointer()         ? slot.Target.AddressBytes()
                 : record != nullptr ? GetObjectStructSize(record)
                                     : GetBasicTypeSize(slot, basic);
  if (text_bytes > 0) return text_bytes;
  for (const int64_t dimension : dimensions) size = SizeProduct(size, dimension);
  return size;
}

ValueType CommonType(const C_SLOT& slot, const ValueType& left, const ValueType& right) {
  if (left.IsNarrowField()) return CommonType(slot, ValueType::Basic(Tok::int_), right);
  if (right.IsNarrowField()) return CommonType(slot, left, ValueType::Basic(Tok::int_));
  const ValueType& wider = right.Size(slot) > left.Size(slot) && !left.IsArray() ? right : left;
  if (wider.IsArray()) return wider.Element().Pointer();
  const ValueType plain = ValueType::Basic(Tok::int_);
  if (wider.IsReal() || wider.IsPointer() || wider.IsStruct()) return wider;
  if (wider.Size(slot) < plain.Size(slot)) return plain;
  ValueType type = wider;
  for (const ValueType* operand : {&left, &right})
    type.is_unsigned |= operand->is_unsigned && operand->Size(slot) == wider.Size(slot);
  return type;
}

}  // namespace vorc
