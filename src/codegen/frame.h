#pragma once

#include "codegen/procedure.h"
#include "program/value_type.h"

namespace vorc {

/// Bytes that an argument of so many bytes takes on the stack: a word of the address width, or 8.
int32_t VorcPromoteArgWidth(const C_SLOT& slot, int32_t width);
/// The same for a parameter as it is declared. Structs are handed over by their address.
int32_t ParameterSlotWidth(const C_SLOT& slot, const SYM_REC* parameter);
/// What crosses a call when a value of this type does. An array crosses as its address, a
/// long double not at all.
PassedValue PassedOf(const C_SLOT& slot, const ValueType& type);
/// True for a parameter that holds a struct and no pointer to one.
bool IsStructParameter(const SYM_REC* parameter);

/// Places of parameters above FRAMEPTR, the last one at 0.
void UpdateArgSpOffset(Procedure& procedure);
/// Places of all locals of all blocks below FRAMEPTR; no two share bytes. A struct parameter has its
/// own copy there. False if they need more than the frame can hold.
bool UpdateLocalVarAddress(Procedure& procedure);

/// True for the `void` of an empty parameter list.
bool IsVoidParameter(const SYM_REC* parameter);

}  // namespace vorc
