#pragma once

#include <functional>
#include <string>

#include "base/descriptor.h"
#include "program/slot.h"

namespace vorc {

/// Makes a file anew and opens it for writing. An empty answer if that can't be done.
using OpenForWriting = std::function<Descriptor(const std::string& path)>;

/// Turns each function of the script that lies in the integer subset into a module in the design file, behind
/// the script's embedded blocks, and writes a testbench for them that checks itself. Says on standard output
/// what it made and what it left out. 1 for success; 0 if there was nothing to write, or if a file couldn't
/// be written whole: both are the caller's to remove then.
int MorvGenerateRTL(const C_SLOT& slot, const std::string& source, const std::string& design_path,
                    const std::string& testbench_path, const OpenForWriting& open);

}  // namespace vorc
