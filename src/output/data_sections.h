#pragma once

#include "codegen/procedure.h"

namespace vorc {

/// Gives function statics the names under which the assembler knows them.
void RenameProcStatics(CodegenContext& context);
/// Variables without initial value.
void EmitAssemblyBssSection(CodegenContext& context);
/// Variables with one.
void EmitAssemblyDataSection(CodegenContext& context);
/// Texts that the code and the data refer to; behind the code, since the code collects them.
void EmitAssemblyUnnamedStringDataSection(CodegenContext& context);

}  // namespace vorc
