#pragma once

#include <span>

#include "lib/builtin_binding.h"

namespace vorc {

/// The script functions of version fields and version numbers.
std::span<const BuiltinBinding> VersionBuiltins();

void MorvLibFieldBuiltin(BuiltinCall& call);
void MorvLibVersionBuiltin(BuiltinCall& call);
void MorvVersionCmpBuiltin(BuiltinCall& call);

}  // namespace vorc
