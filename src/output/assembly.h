#pragma once

#include "codegen/block_hook.h"
#include "output/output_files.h"
#include "program/slot.h"

namespace vorc {

/// Compiles the records of a parsed source: the assembly text with its header, data and code, and the
/// logs of the analysis. Errors are reported and counted. A back end's hook takes the place of the code.
void EmitAssembly(C_SLOT& slot, OutputFiles& files, const std::string& source, BlockHook* hook);

}  // namespace vorc
