#pragma once

#include <cstdint>

namespace vorc {

/// A sum and a product in 64 bits that wrap, as a processor's do.
inline int64_t WrappingSum(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}
inline int64_t WrappingProduct(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) * static_cast<uint64_t>(b));
}

}  // namespace vorc
