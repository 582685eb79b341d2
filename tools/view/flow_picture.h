#pragma once

#include <string>

#include "view/log_reader.h"

namespace vorc {

/// The flow graph as SVG: blocks with their code from the entry downward, jumps back at the right side.
/// Empty for a function with too many blocks to draw.
std::string FlowGraphSvg(const CompiledFunction& function);

/// Where values live, as SVG: a row for each variable, the blocks side by side, a bar for each range in the
/// colour of its register.
std::string LiveRangesSvg(const CompiledFunction& function);

}  // namespace vorc
