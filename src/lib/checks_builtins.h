#pragma once

#include <span>

#include "lib/builtin_binding.h"

namespace vorc {

/// The built-ins of self-testing scripts, and the one that ends the process.
std::span<const BuiltinBinding> CheckBuiltins();

}  // namespace vorc
