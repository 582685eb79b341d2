#include "program/layout.h"

#include <algorithm>
#include <limits>

namespace vorc {

namespace {

constexpr int64_t kLargestSize = std::numeric_limits<int32_t>::max();
constexpr int32_t kDollarSize = 8;
constexpr int32_t kEnumSize = 4;
constexpr int32_t kParameterPointerSize = 8;
constexpr uint16_t kFrameless = STATIC_VAR | EXTERN_VAR | LABEL_VAR;

int32_t Capped(int64_t size) {
  return static_cast<int32_t>(std::min(size, kLargestSize));
}

bool IsMemberFunctionOrThis(const STRUCT_REC* record, const SYM_REC* member) {
  return member == record->This;
}

/// A run of bit fields that share storage units of one size.
struct BitFieldRun {
  int32_t unit = 0;
  int32_t used = 0;
};

void PlaceMember(C_SLOT& slot, SYM_REC* member, int64_t* size, BitFieldRun* run) {
  const int32_t bytes = GetDeclaredDataSize(slot, member);
  if (member->BitFieldWidth == 0) {
    *size += run->unit;
    *run = {};
    member->MemberOffset = Capped(*size);
    *size += bytes;
    return;
  }
  const bool joins = run->unit == bytes && run->used + member->BitFieldWidth <= 8 * bytes;
  if (!joins) {
    *size += run->unit;
    *run = {bytes, 0};
  }
  member->MemberOffset = Capped(*size);
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
    case Tok::long_: return slot.Target.CPUSIZE == 32 ? 4 : 8;
    case Tok::INT128:
    case Tok::UINT128: return 16;
    case Tok::INT256:
    case Tok::UINT256: return 32;
    default: return 0;
  }
}

int32_t GetTypeSize(C_SLOT& slot, const TypeSpec& type) {
  const TypeSpec* at = &type;
  while (at->Typedef != nullptr) {
    const TYPEDEF_REC* record = at->Typedef;
    int64_t elements = 1;
    for (int i = 0; i < record->Shape.DimensionCount; ++i) {
      elements = std::min(elements * record->Shape.Dimensions[i], kLargestSize);
    }
    if (record->PointerDepth > 0 || record->Function != nullptr)
      return Capped(elements * slot.Target.ADDRSIZE / 8);
    if (elements != 1) return Capped(elements * GetTypeSize(slot, *record));
    at = record;
  }
  if (at->Struct != nullptr) return GetObjectStructSize(slot, at->Struct);
  if (at->Enum != nullptr || at->BasicType == Tok::enum_) return kEnumSize;
  return GetBasicTypeSize(slot, at->BasicType);
}

int32_t GetObjectSize(C_SLOT& slot, const SYM_REC* symbol) {
  if (symbol->TotalDepth > 0 || symbol->IsFunctionPointer) return slot.Target.ADDRSIZE / 8;
  if (symbol->Struct != nullptr) return GetObjectStructSize(slot, symbol->Struct);
  if (symbol->Enum != nullptr) return kEnumSize;
  return GetBasicTypeSize(slot, symbol->ValueType);
}

int32_t GetDeclaredDataSize(C_SLOT& slot, const SYM_REC* symbol) {
  int64_t size = GetObjectSize(slot, symbol);
  for (int i = 0; i < symbol->Shape.DimensionCount; ++i) {
    size = std::min(size * std::max<int64_t>(symbol->Shape.Dimensions[i], 0), kLargestSize);
  }
  return Capped(size);
}

int32_t CalculateParentSizes(C_SLOT& slot, STRUCT_REC* record) {
  if (record->LayoutDone) return record->ParentSize;
  int64_t size = 0;
  for (const PARENT_NODE* parent : record->Parents) size += GetObjectStructSize(slot, parent->Struct);
  return Capped(size);
}

int32_t GetObjectStructSize(C_SLOT& slot, STRUCT_REC* record) {
  return Capped(int64_t{GetStructSize(slot, record)} + CalculateParentSizes(slot, record));
}

int32_t GetStructSize(C_SLOT& slot, STRUCT_REC* record) {
  if (record->LayoutDone || record->IsForwardDeclared) return record->StructSize;
  record->ParentSize = CalculateParentSizes(slot, record);
  record->LayoutDone = true;
  int64_t size = 0;
  BitFieldRun run;
  for (SYM_REC* member : record->MembersHeader.Symbols) {
    if (IsMemberFunctionOrThis(record, member)) continue;
    if (record->DeclType == Tok::union_) {
      member->MemberOffset = 0;
      size = std::max<int64_t>(size, GetDeclaredDataSize(slot, member));
    } else {
      PlaceMember(slot, member, &size, &run);
    }
  }
  record->StructSize = Capped(size + run.unit);
  return record->StructSize;
}

bool ContainsStruct(const STRUCT_REC* record, const STRUCT_REC* part) {
  if (record == part) return true;
  for (const PARENT_NODE* parent : record->Parents) {
    if (ContainsStruct(parent->Struct, part)) return true;
  }
  for (const SYM_REC* member : record->MembersHeader.Symbols) {
    if (IsMemberFunctionOrThis(record, member) || member->Struct == nullptr) continue;
    if (member->TotalDepth == 0 && !member->IsFunctionPointer && ContainsStruct(member->Struct, part))
      return true;
  }
  return false;
}

namespace {

// Arrays and structs are handed over by address, so every parameter but a scalar takes a pointer.
int32_t ParameterSize(C_SLOT& slot, const SYM_REC* parameter) {
  if (parameter->TotalDepth > 0 || parameter->IsFunctionPointer || parameter->Shape.DimensionCount > 0) {
    return kParameterPointerSize;
  }
  return GetDeclaredDataSize(slot, parameter);
}

void PlaceLocals(C_SLOT& slot, const SYMBOLS_HEADER& header, int64_t* offset) {
  for (SYM_REC* symbol : header.Symbols) {
    if ((symbol->StorageType & kFrameless) != 0) continue;
    *offset += GetDeclaredDataSize(slot, symbol);
    symbol->IsLocal = true;
    symbol->FrameOffset = Capped(*offset);
  }
}

}  // namespace

void UpdateArgSpOffset(C_SLOT& slot, FUNCPROTO_REC* proto) {
  int64_t total = 0;
  for (const SYM_REC* parameter : proto->ParametersHeader.Symbols) total += ParameterSize(slot, parameter);
  int64_t offset = total;
  for (SYM_REC* parameter : proto->ParametersHeader.Symbols) {
    offset -= ParameterSize(slot, parameter);
    parameter->FrameOffset = Capped(offset);
  }
  if (proto->ProcBody != nullptr) proto->ProcBody->ArgSize = Capped(total);
}

int32_t UpdateLocalVarAddress(C_SLOT& slot, FUNCPROTO_REC* proto) {
  PROC_TABLE* body = proto->ProcBody;
  int64_t offset = 0;
  PlaceLocals(slot, body->LocalsHeader, &offset);
  for (const CODE_BLOCK* block : body->Blocks) PlaceLocals(slot, block->LocalsHeader, &offset);
  body->LocalSize = Capped(offset);
  return body->LocalSize;
}

Tok ExtractType(const TypeSpec& type) {
  const TypeSpec* at = &type;
  while (at->Typedef != nullptr) at = at->Typedef;
  if (at->Enum != nullptr || at->BasicType == Tok::enum_) return Tok::int_;
  return at->Struct != nullptr ? Tok::struct_ : at->BasicType;
}

}  // namespace vorc
