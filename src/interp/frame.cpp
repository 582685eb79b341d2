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

void PlaceScope(const C_SLOT& slot, const SYMBOLS_HEADER& header, int64_t* offset) {
  for (SYM_REC* symbol : header.Symbols) {
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
  PROC_TABLE* body = proto->ProcBody;
  int64_t offset = 0;
  PlaceScope(slot, body->LocalsHeader, &offset);
  for (const CODE_BLOCK* block : body->Blocks) PlaceScope(slot, block->LocalsHeader, &offset);
  body->LocalSize = Capped(offset);
  return body->LocalSize;
}

}  // namespace vorc
