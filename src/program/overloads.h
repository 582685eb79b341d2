#pragma once

#include "program/slot.h"

// Which function a call means, and whether its arguments fit. Counts decide, types never do.

namespace vorc {

/// True for `(void)` and `()`: the parameter list holds nothing but a `void`.
bool FirstIsVoid(const FUNCPROTO_REC* function);
/// True if a call with `count` arguments can mean this function.
bool ParameterDataTypeMatch(const FUNCPROTO_REC* function, int count);
/// The overload that takes `count` arguments. A function without overloads is its own choice, whatever
/// the count. Null if none of several fits.
FUNCPROTO_REC* ChooseOverload(FUNCPROTO_REC* function, int count);
/// True if the count calls for no warning. One argument to `(void)` passes, and so does none to a
/// single parameter.
bool ArgumentCountFits(const FUNCPROTO_REC* function, int count);
/// What stands for a function now: itself, or the definition that took the place of its prototype.
FUNCPROTO_REC* CurrentFunction(const C_SLOT& slot, FUNCPROTO_REC* function);

/// Compares parameter lists: 0 if equal, 1 or -1 if not.
int CompareParams(const FUNCPROTO_REC* a, const FUNCPROTO_REC* b);

}  // namespace vorc
