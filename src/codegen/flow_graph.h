#pragma once

#include "codegen/procedure.h"

namespace vorc {

/// Everything from a parsed function to its text: walks it, analyses it, and writes its code block by
/// block. A function without a body makes none.
void EmitFuncAssmblyCode(CodegenContext& context, FUNCPROTO_REC* function);

}  // namespace vorc
