#pragma once

#include <cstdint>
#include <string>

namespace vorc {

/// What tells one compilation from every other; the files of one compilation carry the same.
struct VorcReference128 {
  uint64_t high = 0;
  uint64_t low = 0;
};

VorcReference128 GenerateVorcReference128();
/// 32 hexadecimal digits.
std::string FormatVorcReference128(const VorcReference128& reference);

}  // namespace vorc
