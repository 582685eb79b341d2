#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "lib/sha256_blocks.h"

namespace vorc {

using Sha256Digest = std::array<uint8_t, 32>;

/// The bytes of a state, each word with its highest byte first.
Sha256Digest Sha256Bytes(const Sha256State& state);

/// SHA-256 (FIPS 180-4) of bytes that arrive piece by piece.
class Sha256 {
 public:
  void Update(std::string_view bytes);
  /// The digest of all bytes so far. Ends the use of this object.
  Sha256Digest Finish();

 private:
  Sha256State state_ = kSha256Start;
  uint64_t bit_count_ = 0;
  std::array<uint8_t, kSha256BlockSize> block_{};
  uint32_t fill_ = 0;
};

/// The digest of one text.
Sha256Digest Sha256Of(std::string_view bytes);

}  // namespace vorc
