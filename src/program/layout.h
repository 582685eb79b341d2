#pragma once

#include <cstdint>

#include "program/slot.h"

// Sizes of types and places in objects. Objects are packed: nothing is ever padded.

namespace vorc {

/// A product of sizes that stops at the largest 64-bit number.
inline int64_t SizeProduct(int64_t a, int64_t b) {
  int64_t product = 0;
  return __builtin_mul_overflow(a, b, &product) ? INT64_MAX : product;
}

/// Bytes of a basic type, 0 for a token that is none.
int32_t GetBasicTypeSize(const C_SLOT& slot, Tok token);
/// Bytes of one element of a variable: the address size for pointers, else its type's size.
int32_t GetObjectSize(C_SLOT& slot, const SYM_REC* symbol);
/// Bytes of a whole variable, 0 while its first dimension is open. Sizes stop at 2 GiB.
int32_t GetDeclaredDataSize(C_SLOT& slot, const SYM_REC* symbol);
/// Bytes of a type without pointers, structs with their bases.
int32_t GetTypeSize(C_SLOT& slot, const TypeSpec& type);
/// Bytes of the members of a struct, its bases not counted; settles the members' offsets.
int32_t GetStructSize(C_SLOT& slot, STRUCT_REC* record);
int32_t CalculateParentSizes(C_SLOT& slot, STRUCT_REC* record);
/// Bytes of a whole object: its bases in order, then its own members.
int32_t GetObjectStructSize(C_SLOT& slot, STRUCT_REC* record);
/// True if an object of `record` would hold one of `part`, directly or deeper.
bool ContainsStruct(const STRUCT_REC* record, const STRUCT_REC* part);
/// Offsets of parameters above the frame base; the first parameter lies highest.
void UpdateArgSpOffset(C_SLOT& slot, FUNCPROTO_REC* proto);
/// Offsets of all locals below the frame base; answers their bytes.
int32_t UpdateLocalVarAddress(C_SLOT& slot, FUNCPROTO_REC* proto);
/// The basic type behind a typedef chain: 41 for a struct, int for an enum.
Tok ExtractType(const TypeSpec& type);

}  // namespace vorc
