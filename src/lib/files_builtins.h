#pragma once

#include <span>

#include "lib/builtin_binding.h"

namespace vorc {

void MorvFileReadBuiltin(BuiltinCall& call);
void MorvFileWriteBuiltin(BuiltinCall& call);
void MorvFileContainsBuiltin(BuiltinCall& call);
void MorvFileDiffBuiltin(BuiltinCall& call);
void MorvFileLinesBuiltin(BuiltinCall& call);
void MorvFileLineBuiltin(BuiltinCall& call);
void MorvFileReplaceBuiltin(BuiltinCall& call);
void MorvFileExistsBuiltin(BuiltinCall& call);
void MorvFileMtimeBuiltin(BuiltinCall& call);
void MorvFileSizeBuiltin(BuiltinCall& call);
void MorvFileFingerprintBuiltin(BuiltinCall& call);
void MorvFingerprintSimilarityBuiltin(BuiltinCall& call);
void MorvMkdirBuiltin(BuiltinCall& call);
void MorvRemoveBuiltin(BuiltinCall& call);
void MorvRenameBuiltin(BuiltinCall& call);
void MorvGlobBuiltin(BuiltinCall& call);
void MorvGlobRBuiltin(BuiltinCall& call);
void MorvFopenBuiltin(BuiltinCall& call);
void MorvFgetsBuiltin(BuiltinCall& call);
void MorvFeofBuiltin(BuiltinCall& call);
void MorvFcloseBuiltin(BuiltinCall& call);

/// The script names of all of these, the short ones included.
std::span<const BuiltinBinding> FileBuiltins();

}  // namespace vorc
