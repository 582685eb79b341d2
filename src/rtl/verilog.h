#pragma once

#include "base/text_writer.h"
#include "rtl/function.h"

namespace vorc {

/// Writes the Verilog-2001 module of a function: combinational, or a state machine if it has a loop.
void WriteModule(const RtlFunction& function, TextWriter& design);

/// Writes what the testbench holds for a module: its instance and ten checked calls.
void WriteModuleTest(const RtlFunction& function, TextWriter& testbench);

}  // namespace vorc
