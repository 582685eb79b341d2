#pragma once

#include "codegen/procedure.h"

namespace vorc {

/// Writes the initial value of a variable behind its "= ", with the line's end.
void WriteInitialValue(CodegenContext& context, const SYM_REC* symbol);
/// How many elements, all dimensions multiplied; an open first one is as long as its list.
int64_t ElementCount(CodegenContext& context, const SYM_REC* symbol);

}  // namespace vorc
