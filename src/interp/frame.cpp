#include "interp/frame.h"

#include <algorithm>

#include "program/layout.h"

namespace vorc {

namespace {

constexpr int32_t kParameterPointerSize = 8;
constexpr uint16_t kFrameless = STATIC_VAR | EXTERN_VAR | LABEL_VAR;

// A frame that large fits into no stack, which is what its user is told.
int32_t Capped(int64_t size) {
  return static_cast<int32_t>(std::min<int64_t>(size, INT32_MAX));
}

int32_t ParameterSize(const C_SLOT& slot, const SYM_REC* parameter) {
  if (parameter->TotalDepth > 0 || parameter->IsFunctionPointer || parameter->Shape.DimensionCount > 0) {
    return kParameterPointerSize;
  }
  return GetDeclaredDataSize(slot, parameter);
}

void PlaceFrom(const C_SLOT& slot, SYM_REC* first, int64_t* offset) {
  for (SYM_REC* symbol = first; symbol != nullptr; symbol = symbol->Next) {
    if ((symbol->StorageType & kFrameless) != 0) continue;
    *offset += GetDeclaredDataSize(slot, symbol);
    symbol->IsLocal = true;
    symbol->FrameOffset = Capped(*offset);
  }
}

}  // namespace

void PlaceParameters(const C_SLOT& slot, FUNCPROTO_REC* proto) {
  int64_t total = 0;
  for (const SYM_REC* parameter : proto->ParametersHeader.Symbols) total += ParameterSize(slot, parameter);
  int64_t offset = total;
  for (SYM_REC* parameter : proto->ParametersHeader.Symbols) {
    offset -= ParameterSize(slot, parameter);
    parameter->FrameOffset = Capped(offset);
  }
  if (proto->ProcBody != nullptr) proto->ProcBody->ArgSize = Capped(total);
}

int32_t PlaceLocals(const C_SLOT& slot, FUNCPROTO_REC* proto) {
  PlacedLocals placed;
  return PlaceNewLocals(slot, proto, &placed);
}

int32_t PlaceNewLocals(const C_SLOT& slot, FUNCPROTO_REC* proto, PlacedLocals* placed) {
  PROC_TABLE* body = proto->ProcBody;
  const List<SYM_REC>& locals = body->LocalsHeader.Symbols;
  PlaceFrom(slot, placed->last == nullptr ? locals.First : placed->last->Next, &placed->bytes);
  placed->last = locals.Last;
  CODE_BLOCK* block = placed->last_block == nullptr ? body->Blocks.First : placed->last_block->Next;
  for (; block != nullptr; block = block->Next)
    PlaceFrom(slot, block->LocalsHeader.Symbols.First, &placed->bytes);
  placed->last_block = body->Blocks.Last;
  body->LocalSize = Capped(placed->bytes);
  return body->LocalSize;
}

}  // namespace vorc
