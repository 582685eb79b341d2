#pragma once

#include <cstdint>

namespace vorc {

/// A double as a 64-bit integer, cut towards zero. What doesn't fit, or is no number, gives the smallest
/// integer.
inline int64_t TruncatedToInteger(double value) {
  constexpr double kLimit = 9223372036854775808.0;
  if (!(value >= -kLimit && value < kLimit)) return INT64_MIN;
  return static_cast<int64_t>(value);
}

}  // namespace vorc
