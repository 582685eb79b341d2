#pragma once

#include <span>

#include "lib/builtin_binding.h"

namespace vorc {

/// The built-ins that hash, encode, seal, and make content security policies.
std::span<const BuiltinBinding> CryptoBuiltins();

}  // namespace vorc
