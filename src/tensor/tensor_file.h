#pragma once

#include <string_view>

#include "base/function_ref.h"
#include "tensor/tensor.h"

// Tensors as text: the line "MORVTENSOR rows cols", then a line for each value with 17 significant
// digits, which bring back every double as it was.

namespace vorc {

/// Hands the text to `write` piece by piece. False as soon as that answers false.
bool MorvTensorSave(const MorvTensorRec& t, FunctionRef<bool(std::string_view)> write);

/// The tensor of a text. Null for another first word, sizes below 1, and too few values; what
/// stands behind the last value doesn't matter.
TensorPtr MorvTensorLoad(std::string_view text);

}  // namespace vorc
