#include "output/build_reference.h"

#include <random>

#include "base/format.h"

namespace vorc {

VorcReference128 GenerateVorcReference128() {
  std::random_device random;
  const auto word = [&random] { return uint64_t{random()} << 32 | random(); };
  const uint64_t high = word();
  return {high, word()};
}

std::string FormatVorcReference128(const VorcReference128& reference) {
  return Format("%016llX%016llX", static_cast<unsigned long long>(reference.high),
                static_cast<unsigned long long>(reference.low));
}

}  // namespace vorc
