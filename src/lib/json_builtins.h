#pragma once

#include <span>

#include "lib/builtin_binding.h"

namespace vorc {

/// The script functions that read JSON.
std::span<const BuiltinBinding> JsonBuiltins();

void MorvJsonGetBuiltin(BuiltinCall& call);

}  // namespace vorc
