#pragma once

#include <span>

#include "lib/builtin_binding.h"

namespace vorc {

void MorvReBuiltin(BuiltinCall& call);
void IsedBuiltin(BuiltinCall& call);
void IsedFileBuiltin(BuiltinCall& call);

std::span<const BuiltinBinding> RegexBuiltins();

}  // namespace vorc
