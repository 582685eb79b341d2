#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "builtins/call.h"

namespace vorc {

/// Hands a new list of these texts to the script: its handle, or 0 once every number is used up.
int32_t NewListHandle(const BuiltinCall& call, std::vector<std::string> items);

}  // namespace vorc
