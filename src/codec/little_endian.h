#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace vorc {

static_assert(std::endian::native == std::endian::little, "the loads below take the host's order");

/// The four bytes at `from` as a little-endian number.
inline uint32_t LoadLittle32(const uint8_t* from) {
  uint32_t value;
  std::memcpy(&value, from, sizeof value);
  return value;
}

/// The eight bytes at `from` as a little-endian number.
inline uint64_t LoadLittle64(const uint8_t* from) {
  uint64_t value;
  std::memcpy(&value, from, sizeof value);
  return value;
}

/// Puts the low `count` bytes of `value` at `to`, lowest first.
inline void StoreLittle(uint8_t* to, uint64_t value, int count) {
  for (int i = 0; i < count; ++i) to[i] = static_cast<uint8_t>(value >> (8 * i));
}

}  // namespace vorc
