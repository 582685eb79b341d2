#pragma once

#include <cstdint>

#include "program/slot.h"

// Sizes of types and places in objects. Objects are packed: nothing is ever padded. No type is larger
// than `kLargestType`; who declares one asks `TypeFits` or `SettleLayout` first.

namespace vorc {

inline constexpr int64_t kLargestType = INT32_MAX;

/// A product of sizes that stops at the largest 64-bit number.
inline int64_t SizeProduct(int64_t a, int64_t b) {
  int64_t product = 0;
  return __builtin_mul_overflow(a, b, &product) ? INT64_MAX : product;
}

/// Bytes of a basic type, 0 for a token that is none.
int32_t GetBasicTypeSize(const C_SLOT& slot, Tok token);
/// Bytes of one element of a variable: the address size for pointers, else its type's size.
int32_t GetObjectSize(const C_SLOT& slot, const SYM_REC* symbol);
/// Bytes of a whole variable, 0 while its first dimension is open.
int32_t GetDeclaredDataSize(const C_SLOT& slot, const SYM_REC* symbol);
/// True if a variable, or a row of it where the first dimension is open, is not too large.
bool TypeFits(const C_SLOT& slot, const SYM_REC* symbol);

/// Places the members of a struct whose body has been read, and settles its size. False, with a size of
/// 0, if it is too large.
bool SettleLayout(const C_SLOT& slot, STRUCT_REC* record);
/// Bytes of a whole object: its bases in order, then its own members. 0 before the layout is settled.
int32_t GetObjectStructSize(const STRUCT_REC* record);
/// The basic type behind a typedef chain: 41 for a struct, int for an enum.
Tok ExtractType(const TypeSpec& type);

}  // namespace vorc
