#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vorc {

inline constexpr size_t kSha256BlockSize = 64;

/// The chaining value of SHA-256 (FIPS 180-4).
using Sha256State = std::array<uint32_t, 8>;

inline constexpr Sha256State kSha256Start = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                             0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

/// Works `count` blocks of 64 bytes into a state.
using Sha256BlockFunction = void (*)(Sha256State& state, const uint8_t* blocks, size_t count);

/// In plain C++, for any processor.
void Sha256BlocksPortable(Sha256State& state, const uint8_t* blocks, size_t count);

/// By the processor's SHA instructions where it has them. Chosen once, at the first call.
Sha256BlockFunction FastestSha256Blocks();

}  // namespace vorc
