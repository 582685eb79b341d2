#pragma once

#include <cstdint>

#include "program/slot.h"
#include "program/value_type.h"

namespace vorc {

/// The type of an expression, told without evaluating it: `sizeof`, and whoever chooses code by it. Two
/// pointers are a number of `register_bytes` apart; 0 stands for the width that the command line asks for.
ValueType StaticType(const C_SLOT& slot, const EXPR_NODE* head, int register_bytes = 0);

/// Bytes that the value of an expression takes; those of an address where nothing is known of it.
int64_t StaticSize(const C_SLOT& slot, const EXPR_NODE* head);

}  // namespace vorc
