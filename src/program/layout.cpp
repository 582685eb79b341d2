#include "program/layout.h"

#include <algorithm>

namespace vorc {

namespace {

constexpr int32_t kDollarSize = 8;
constexpr int32_t kEnumSize = 4;

/// A run of bit fields that share storage units of one size.
struct BitFieldRun {
  int32_t unit = 0;
  int32_t used = 0;
};

void PlaceMember(const C_SLOT& slot, SYM_REC* member, int64_t* size, BitFieldRun* run) {
  const int32_t bytes = GetDeclaredDataSize(slot, member);
  if (member->BitFieldWidth == 0) {
    *size += run->unit;
    *run = {};
    member->MemberOffset = static_cast<int32_t>(*size);
    *size += bytes;
    return;
  }
  const bool joins = run->unit == bytes && run->used + member->BitFieldWidth <= 8 * bytes;
  if (!joins) {
    *size += run->unit;
    *run = {bytes, 0};
  }
  member->MemberOffset = static_cast<int32_t>(*size);
  member->BitFieldOffset = run->used;
  run->used += member->BitFieldWidth;
}

}  // namespace

int32_t GetBasicTypeSize(const C_SLOT& slot, Tok token) {
  switch (token) {
    case Tok::char_:
    case Tok::INT8:
    case Tok::UINT8:
    case Tok::INT4:
    case Tok::UINT4:
    case Tok::BIT:
    case Tok::UCHAR:
    case Tok::bool_: return 1;
    case Tok::INT16:
    case Tok::UINT16:
    case Tok::wchar_t_: return 2;
    case Tok::INT32:
    case Tok::UINT32:
    case Tok::float_:
    case Tok::int_: return 4;
    case Tok::INT64:
    case Tok::UINT64:
    case Tok::double_: return 8;
    case Tok::dollar: return kDollarSize;
    case Tok::longdouble: return 10;
    case Tok::long_: return slot.Target.cpu_size == 32 ? 4 : 8;
    case Tok::INT128:
    case Tok::UINT128: return 16;
    case Tok::INT256:
    case Tok::UINT256: return 32;
    default: return 0;
  }
}

int32_t GetObjectSize(const C_SLOT& slot, const SYM_REC* symbol) {
  if (symbol->TotalDepth > 0 || symbol->IsFunctionPointer) return slot.Target.AddressBytes();
  if (symbol->Struct != nullptr) return GetObjectStructSize(symbol->Struct);
  if (symbol->Enum != nullptr) return kEnumSize;
  return GetBasicTypeSize(slot, symbol->ValueType);
}

int32_t GetDeclaredDataSize(const C_SLOT& slot, const SYM_REC* symbol) {
  int64_t size = GetObjectSize(slot, symbol);
  for (int i = 0; i < symbol->Shape.DimensionCount && size > 0; ++i) size *= symbol->Shape.Dimensions[i];
  return static_cast<int32_t>(size);
}

bool TypeFits(const C_SLOT& slot, const SYM_REC* symbol) {
  int64_t size = GetObjectSize(slot, symbol);
  for (int i = 0; i < symbol->Shape.DimensionCount; ++i) {
    if (symbol->Shape.Dimensions[i] > 0) size = SizeProduct(size, symbol->Shape.Dimensions[i]);
  }
  return size <= kLargestType;
}

int32_t GetObjectStructSize(const STRUCT_REC* record) {
  return record->ParentSize + record->StructSize;
}

bool SettleLayout(const C_SLOT& slot, STRUCT_REC* record) {
  int64_t parents = 0;
  for (const PARENT_NODE* parent : record->Parents) parents += GetObjectStructSize(parent->Struct);
  int64_t size = 0;
  BitFieldRun run;
  for (SYM_REC* member : record->MembersHeader.Symbols) {
    if (member == record->This) continue;
    if (record->DeclType == Tok::union_) {
      member->MemberOffset = 0;
      size = std::max<int64_t>(size, GetDeclaredDataSize(slot, member));
    } else {
      PlaceMember(slot, member, &size, &run);
    }
    if (parents + size + run.unit > kLargestType) return false;
  }
  record->ParentSize = static_cast<int32_t>(parents);
  record->StructSize = static_cast<int32_t>(size + run.unit);
  return parents <= kLargestType;
}

Tok ExtractType(const TypeSpec& type) {
  const TypeSpec* at = &type;
  while (at->Typedef != nullptr) at = at->Typedef;
  if (at->Enum != nullptr || at->BasicType == Tok::enum_) return Tok::int_;
  return at->Struct != nullptr ? Tok::struct_ : at->BasicType;
}

}  // namespace vorc
