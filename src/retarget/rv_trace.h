#pragma once

#include "base/text_writer.h"
#include "codegen/instruction.h"

namespace vorc {

/// Tells a record ahead of its selection: a line for all of it, and one for each operand that holds
/// something.
void RvTraceRecord(TextWriter& out, const Instruction& record);

}  // namespace vorc
