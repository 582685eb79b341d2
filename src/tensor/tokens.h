#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tensor/tensor.h"

namespace vorc {

/// One row with the value of each byte, 0 to 255. Null for an empty text.
TensorPtr MorvTokenize(std::string_view text);

/// The text that a row of byte values stands for: at most `size` - 1 bytes, up to the first zero.
/// Values are rounded, halves upwards, and brought into 0 to 255. Empty unless t has one row.
std::string MorvDetokenize(const MorvTensorRec& t, size_t size);

/// One row of `dims` counts of the text's pairs of neighbours, hashed. Case doesn't matter, nor how
/// much white space stands between words. `dims` below 1 means 64.
TensorPtr MorvTextEmbed(std::string_view text, int32_t dims);

}  // namespace vorc
