#pragma once

#include <span>

#include "lib/builtin_binding.h"

namespace vorc {

void MorvStrCmpBuiltin(BuiltinCall& call);
void MorvStrStrBuiltin(BuiltinCall& call);
void MorvSearchTxtBuiltin(BuiltinCall& call);
void MorvStrLenBuiltin(BuiltinCall& call);
void MorvStartsWithBuiltin(BuiltinCall& call);
void MorvEndsWithBuiltin(BuiltinCall& call);
void MorvSubstrBuiltin(BuiltinCall& call);
void MorvUpperBuiltin(BuiltinCall& call);
void MorvLowerBuiltin(BuiltinCall& call);
void MorvTrimBuiltin(BuiltinCall& call);
void MorvReplaceAllBuiltin(BuiltinCall& call);
void MorvHtmlEscapeBuiltin(BuiltinCall& call);
void MorvHexBuiltin(BuiltinCall& call);
void MorvBinBuiltin(BuiltinCall& call);
void MorvParseHexBuiltin(BuiltinCall& call);
void MorvAtoiBuiltin(BuiltinCall& call);
void MorvBitsBuiltin(BuiltinCall& call);

/// The script names of all of these.
std::span<const BuiltinBinding> StringBuiltins();

}  // namespace vorc
