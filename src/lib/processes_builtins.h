#pragma once

#include <span>

#include "lib/builtin_binding.h"

namespace vorc {

/// The built-ins that run commands.
std::span<const BuiltinBinding> ProcessBuiltins();

}  // namespace vorc
