#pragma once

#include <span>

#include "lib/builtin_binding.h"

namespace vorc {

void MorvUtilCatBuiltin(BuiltinCall& call);
void MorvUtilHeadBuiltin(BuiltinCall& call);
void MorvUtilTailBuiltin(BuiltinCall& call);
void MorvUtilGrepBuiltin(BuiltinCall& call);
void MorvUtilGrepCountBuiltin(BuiltinCall& call);
void MorvUtilCutBuiltin(BuiltinCall& call);
void MorvUtilLsBuiltin(BuiltinCall& call);
void MorvUtilFindBuiltin(BuiltinCall& call);
void MorvUtilReplaceBuiltin(BuiltinCall& call);
void MorvUtilBashBuiltin(BuiltinCall& call);
void MorvUtilMakeBuiltin(BuiltinCall& call);
void MorvUtilKillBuiltin(BuiltinCall& call);
void MorvUtilRunningBuiltin(BuiltinCall& call);

/// The script names of all of these.
std::span<const BuiltinBinding> ShellUtilBuiltins();

}  // namespace vorc
