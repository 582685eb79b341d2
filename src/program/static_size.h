#pragma once

#include <cstdint>

#include "program/slot.h"

namespace vorc {

/// Bytes of the value that an expression would have, told from its types alone: what `sizeof`
/// answers for anything that is no type.
int64_t StaticSize(C_SLOT& slot, const EXPR_NODE* head);

}  // namespace vorc
