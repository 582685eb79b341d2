#pragma once

#include <span>

#include "lib/builtin_binding.h"

namespace vorc {

void MorvGetenvBuiltin(BuiltinCall& call);
void MorvSetenvBuiltin(BuiltinCall& call);
void MorvTimeBuiltin(BuiltinCall& call);
void MorvDateStringBuiltin(BuiltinCall& call);
void MorvElapsedMsBuiltin(BuiltinCall& call);
void MorvCwdBuiltin(BuiltinCall& call);
void MorvChdirBuiltin(BuiltinCall& call);

/// The script names of all of these, the short ones included.
std::span<const BuiltinBinding> SystemBuiltins();

}  // namespace vorc
