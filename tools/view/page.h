#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "view/log_reader.h"

namespace vorc {

/// One page of HTML with everything in it: for each function its flow graph, the live ranges in the colours
/// of their registers, and the source beside its assembly. It needs no script.
std::string FunctionsPage(std::string_view source, const std::vector<CompiledFunction>& functions);

}  // namespace vorc
