#pragma once

#include <span>

#include "lib/builtin_binding.h"

namespace vorc {

/// The script functions of lists, maps, sets, tuples and blobs, with all their names.
std::span<const BuiltinBinding> ContainerBuiltins();

void MorvListNewBuiltin(BuiltinCall& call);
void MorvListAddBuiltin(BuiltinCall& call);
void MorvListGetBuiltin(BuiltinCall& call);
void MorvListCountBuiltin(BuiltinCall& call);
void MorvListSortBuiltin(BuiltinCall& call);
void MorvListFreeBuiltin(BuiltinCall& call);
void MorvSplitBuiltin(BuiltinCall& call);
void MorvJoinBuiltin(BuiltinCall& call);

void MorvMapNewBuiltin(BuiltinCall& call);
void MorvMapSetBuiltin(BuiltinCall& call);
void MorvMapGetBuiltin(BuiltinCall& call);
void MorvMapHasBuiltin(BuiltinCall& call);
void MorvMapCountBuiltin(BuiltinCall& call);
void MorvMapKeysBuiltin(BuiltinCall& call);
void MorvMapFreeBuiltin(BuiltinCall& call);
void MorvMapDeleteBuiltin(BuiltinCall& call);

void MorvSetNewBuiltin(BuiltinCall& call);
void MorvSetAddBuiltin(BuiltinCall& call);
void MorvSetHasBuiltin(BuiltinCall& call);
void MorvSetCountBuiltin(BuiltinCall& call);
void MorvSetRemoveBuiltin(BuiltinCall& call);
void MorvSetItemsBuiltin(BuiltinCall& call);
void MorvSetFreeBuiltin(BuiltinCall& call);

void MorvTupleNewBuiltin(BuiltinCall& call);
void MorvTupleAddBuiltin(BuiltinCall& call);
void MorvTupleGetBuiltin(BuiltinCall& call);
void MorvTupleCountBuiltin(BuiltinCall& call);
void MorvTupleFreeBuiltin(BuiltinCall& call);

void MorvBinReadBuiltin(BuiltinCall& call);
void MorvBinSizeBuiltin(BuiltinCall& call);
void MorvBinGetBuiltin(BuiltinCall& call);
void MorvBinInt32Builtin(BuiltinCall& call);
void MorvBinFloatBuiltin(BuiltinCall& call);
void MorvBinFindBuiltin(BuiltinCall& call);
void MorvBinFreeBuiltin(BuiltinCall& call);

}  // namespace vorc
