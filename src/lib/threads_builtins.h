#pragma once

#include <span>

#include "lib/builtin_binding.h"

namespace vorc {

/// The built-ins of script threads, processors and sleep.
std::span<const BuiltinBinding> ThreadBuiltins();

}  // namespace vorc
