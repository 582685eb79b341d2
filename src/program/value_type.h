#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "program/members.h"
#include "program/slot.h"

namespace vorc {

/// The type of an expression, with typedefs resolved: an array of `dimensions` of `depth` pointer levels
/// to a basic type, a struct or a function.
struct ValueType {
  Tok basic = Tok::NOTOKEN;  ///< NOTOKEN where nothing is known
  const STRUCT_REC* record = nullptr;
  const FUNCPROTO_REC* function = nullptr;  ///< signature behind a function pointer
  int depth = 0;
  std::span<const int64_t> dimensions;  ///< 0 in front for an open one
  int64_t text_bytes = 0;               ///< of a text in quotes: its characters and its end
  bool is_unsigned = false;
  int field_bits = 0;  ///< width of a bit field

  static ValueType OfSymbol(const SYM_REC& symbol);
  /// A declared type such as a function's result.
  static ValueType OfType(const TypeSpec& type);
  static ValueType OfCast(const CAST& cast);
  static ValueType OfFunction(const FUNCPROTO_REC& function);
  static ValueType OfText(std::string_view text);
  /// Of a whole number in the source: the narrowest of int and INT64 that holds it, of a hexadecimal one
  /// UINT32 and UINT64 as well.
  static ValueType OfNumber(const EXPR_NODE& node);
  static ValueType Basic(Tok basic);

  bool IsArray() const { return !dimensions.empty() || text_bytes > 0; }
  bool IsPointer() const { return depth > 0 || function != nullptr; }
  bool IsStruct() const { return record != nullptr && !IsPointer() && !IsArray(); }
  bool IsReal() const;
  /// A bit field all of whose values an int can hold, so that operators take it for one.
  bool IsNarrowField() const { return field_bits > 0 && field_bits < 32; }

  /// What an index, or a `*`, selects: of an array its element, of a pointer what it points to. Of
  /// anything else the type itself.
  ValueType Element() const;
  /// The pointer to a value of this type; of an array, to its first element.
  ValueType Pointer() const;
  /// The type of a data member; NOTOKEN where there is none.
  ValueType Member(const C_SLOT& slot, const Name* name) const;
  /// Bytes of a value, 0 with an open dimension.
  int64_t Size(const C_SLOT& slot) const;
};

/// The type that an arithmetic operator gives its result: the wider operand's, and at least an int; unsigned
/// if an operand of that width is.
ValueType CommonType(const C_SLOT& slot, const ValueType& left, const ValueType& right);

}  // namespace vorc
