#include "codegen/frame.h"

#include "codegen/mnemonics.h"
#include "program/layout.h"

namespace vorc {

namespace {

constexpr int64_t kLargestFrame = int64_t{1} << 30;

bool HasFrameSlot(const SYM_REC* symbol) {
  return !symbol->IsLabel && !symbol->IsParameter && (symbol->StorageType & (STATIC_VAR | EXTERN_VAR)) == 0;
}

void PlaceLocal(Procedure& procedure, const SYM_REC* symbol, int64_t* offset) {
  const int32_t size = GetDeclaredDataSize(procedure.slot, symbol);
  *offset += size;
  procedure.frame[symbol] = {false, static_cast<int32_t>(*offset), size};
}

}  // namespace

int32_t VorcPromoteArgWidth(const C_SLOT& slot, int32_t width) {
  return width == 8 ? 8 : slot.Target.AddressBytes();
}

bool IsVoidParameter(const SYM_REC* parameter) {
  return parameter->ValueType == Tok::void_ && parameter->TotalDepth == 0 && !parameter->IsFunctionPointer;
}

bool IsStructParameter(const SYM_REC* parameter) {
  return parameter->Struct != nullptr && parameter->TotalDepth == 0 && parameter->Shape.DimensionCount == 0 &&
         !parameter->IsFunctionPointer;
}

int32_t ParameterSlotWidth(const C_SLOT& slot, const SYM_REC* parameter) {
  const bool address = parameter->TotalDepth > 0 || parameter->IsFunctionPointer ||
                       parameter->Shape.DimensionCount > 0 || IsStructParameter(parameter);
  return VorcPromoteArgWidth(slot,
                             address ? slot.Target.AddressBytes() : GetDeclaredDataSize(slot, parameter));
}

PassedValue PassedOf(const C_SLOT& slot, const ValueType& type) {
  PassedValue passed;
  if (type.IsStruct()) {
    passed.bytes = static_cast<int32_t>(type.Size(slot));
    passed.record = type.record;
    return passed;
  }
  const bool address = type.IsPointer() || type.IsArray();
  const AccessWidth width = AccessOfType(slot, type.basic, address ? 1 : 0, type.is_unsigned);
  const bool nothing = type.basic == Tok::void_ || type.basic == Tok::longdouble;
  passed.bytes = nothing && !address ? 0 : width.bytes;
  passed.is_unsigned = width.is_unsigned;
  passed.is_real = type.IsReal() && !address;
  return passed;
}

void UpdateArgSpOffset(Procedure& procedure) {
  int32_t total = 0;
  for (const SYM_REC* parameter : procedure.proto->ParametersHeader.Symbols) {
    if (!IsVoidParameter(parameter)) total += ParameterSlotWidth(procedure.slot, parameter);
  }
  procedure.total_arg_size = total;
  for (const SYM_REC* parameter : procedure.proto->ParametersHeader.Symbols) {
    if (IsVoidParameter(parameter)) continue;
    const int32_t width = ParameterSlotWidth(procedure.slot, parameter);
    total -= width;
    procedure.frame[parameter] = {true, total, width};
  }
}

bool UpdateLocalVarAddress(Procedure& procedure) {
  const PROC_TABLE* body = procedure.proto->ProcBody;
  int64_t offset = 0;
  const auto place_all = [&](const SYMBOLS_HEADER& header) {
    for (const SYM_REC* symbol : header.Symbols) {
      if (HasFrameSlot(symbol)) PlaceLocal(procedure, symbol, &offset);
    }
  };
  place_all(body->LocalsHeader);
  for (const CODE_BLOCK* block : body->Blocks) place_all(block->LocalsHeader);
  for (const SYM_REC* parameter : procedure.proto->ParametersHeader.Symbols) {
    if (IsStructParameter(parameter)) PlaceLocal(procedure, parameter, &offset);
  }
  procedure.locals_size = static_cast<int32_t>(offset < kLargestFrame ? offset : 0);
  return offset < kLargestFrame;
}

}  // namespace vorc
