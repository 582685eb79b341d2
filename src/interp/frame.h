#pragma once

#include <cstdint>

#include "program/slot.h"

// Places of parameters and locals in the frames of a script's stack.

namespace vorc {

/// Offsets of parameters above the frame base; the first parameter lies highest. Arrays and structs are
/// handed over by address, so that every parameter but a scalar takes a pointer.
void PlaceParameters(const C_SLOT& slot, FUNCPROTO_REC* proto);
/// Offsets of all locals below the frame base; answers their bytes, at most 2^31 - 1.
int32_t PlaceLocals(const C_SLOT& slot, FUNCPROTO_REC* proto);

/// How far the locals of a function that still grows have been placed.
struct PlacedLocals {
  SYM_REC* last = nullptr;
  CODE_BLOCK* last_block = nullptr;
  int64_t bytes = 0;
};
/// Offsets of what has come since the last time, below what was there; answers the bytes of all.
int32_t PlaceNewLocals(const C_SLOT& slot, FUNCPROTO_REC* proto, PlacedLocals* placed);

}  // namespace vorc
