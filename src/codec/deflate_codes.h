#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// The alphabets of RFC 1951, 3.2.5 and 3.2.6.
namespace vorc {

inline constexpr size_t kMinMatch = 3;
inline constexpr size_t kMaxMatch = 258;
inline constexpr size_t kWindowSize = 32768;
inline constexpr size_t kMaxStoredBlock = 65535;

inline constexpr int kMaxCodeLength = 15;
inline constexpr size_t kEndOfBlock = 256;
inline constexpr size_t kFirstLengthCode = 257;
inline constexpr size_t kFixedLiteralCodes = 288;
inline constexpr size_t kFixedDistanceCodes = 32;
inline constexpr unsigned kFixedDistanceBits = 5;

enum BlockType : unsigned { kStoredBlock = 0, kFixedBlock = 1, kDynamicBlock = 2 };

inline constexpr std::array<uint16_t, 29> vz_len_base = {3,  4,  5,  6,   7,   8,   9,   10,  11, 13,
                                                         15, 17, 19, 23,  27,  31,  35,  43,  51, 59,
                                                         67, 83, 99, 115, 131, 163, 195, 227, 258};
inline constexpr std::array<uint8_t, 29> vz_len_extra = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2,
                                                         2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};
inline constexpr std::array<uint16_t, 30> vz_dist_base = {
    1,   2,   3,   4,   5,   7,    9,    13,   17,   25,   33,   49,   65,    97,    129,
    193, 257, 385, 513, 769, 1025, 1537, 2049, 3073, 4097, 6145, 8193, 12289, 16385, 24577};
inline constexpr std::array<uint8_t, 30> vz_dist_extra = {
    0, 0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7, 8, 8, 9, 9, 10, 10, 11, 11, 12, 12, 13, 13};

/// The length of a literal's, length's or end code in blocks of fixed codes.
constexpr uint8_t FixedLiteralBits(size_t symbol) {
  if (symbol < 144) return 8;
  if (symbol < 256) return 9;
  return symbol < 280 ? 7 : 8;
}

/// The low `count` bits of `code` in reverse: codes stand in the stream with their first bit lowest.
constexpr uint32_t ReverseBits(uint32_t code, int count) {
  uint32_t reversed = 0;
  for (int i = 0; i < count; ++i) reversed |= (code >> i & 1) << (count - 1 - i);
  return reversed;
}

}  // namespace vorc
