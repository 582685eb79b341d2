#pragma once

#include <cstdint>
#include <span>

namespace vorc {

/// CRC-32 (RFC 1952) of what `crc` stands for with `bytes` behind it. A fresh one starts at 0.
uint32_t vz_crc32(uint32_t crc, std::span<const uint8_t> bytes);

/// Adler-32 (RFC 1950) of what `adler` stands for with `bytes` behind it. A fresh one starts at 1.
uint32_t vz_adler32(uint32_t adler, std::span<const uint8_t> bytes);

}  // namespace vorc
