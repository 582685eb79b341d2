#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace vorc {

/// A hash of a text's bytes for tables that live in memory, the same in every run. Quick for short texts.
inline uint64_t HashOf(std::string_view text) {
  constexpr uint64_t kFirst = 0x9E3779B97F4A7C15;
  constexpr uint64_t kSecond = 0xD6E8FEB86659FD93;
  const auto mix = [](uint64_t a, uint64_t b) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<uint64_t>(product) ^ static_cast<uint64_t>(product >> 64);
  };
  const auto read = [](const char* at, size_t count) {
    uint64_t word = 0;
    std::memcpy(&word, at, count);
    return word;
  };
  uint64_t hash = text.size() * kFirst;
  const char* at = text.data();
  size_t left = text.size();
  for (; left >= 8; at += 8, left -= 8) hash = mix(hash ^ read(at, 8), kSecond);
  // What is left, where need be by reads that overlap.
  if (left >= 4)
    hash ^= read(at, 4) | read(at + left - 4, 4) << 32;
  else if (left > 0)
    hash ^= read(at, 1) | read(at + left / 2, 1) << 8 | read(at + left - 1, 1) << 16;
  return mix(hash ^ kFirst, kSecond);
}

}  // namespace vorc
