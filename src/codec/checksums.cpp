#include "codec/checksums.h"

#include <algorithm>
#include <array>

#include "codec/little_endian.h"

namespace vorc {
namespace {

constexpr uint32_t kPolynomial = 0xEDB88320;
constexpr size_t kSlices = 8;

using CrcTables = std::array<std::array<uint32_t, 256>, kSlices>;

// Table k holds what a byte does to the sum with k bytes of zero behind it, so that eight bytes are
// worked in with eight independent look-ups.
constexpr CrcTables MakeCrcTables() {
  CrcTables tables{};
  for (uint32_t byte = 0; byte < 256; ++byte) {
    uint32_t crc = byte;
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1 ? kPolynomial : 0);
    tables[0][byte] = crc;
  }
  for (size_t slice = 1; slice < kSlices; ++slice) {
    for (size_t byte = 0; byte < 256; ++byte) {
      const uint32_t before = tables[slice - 1][byte];
      tables[slice][byte] = before >> 8 ^ tables[0][before & 0xFF];
    }
  }
  return tables;
}

constexpr CrcTables kCrc = MakeCrcTables();

constexpr uint32_t kAdlerModulus = 65521;
// As many bytes as the two sums take before either can exceed 32 bits.
constexpr size_t kAdlerRun = 5552;

}  // namespace

uint32_t vz_crc32(uint32_t crc, std::span<const uint8_t> bytes) {
  crc = ~crc;
  size_t i = 0;
  for (; i + kSlices <= bytes.size(); i += kSlices) {
    const uint64_t word = LoadLittle64(&bytes[i]) ^ crc;
    crc = 0;
    for (size_t k = 0; k < kSlices; ++k) crc ^= kCrc[kSlices - 1 - k][word >> (8 * k) & 0xFF];
  }
  for (; i < bytes.size(); ++i) crc = crc >> 8 ^ kCrc[0][(crc ^ bytes[i]) & 0xFF];
  return ~crc;
}

uint32_t vz_adler32(uint32_t adler, std::span<const uint8_t> bytes) {
  uint32_t low = adler & 0xFFFF;
  uint32_t high = adler >> 16;
  while (!bytes.empty()) {
    const std::span<const uint8_t> run = bytes.first(std::min(bytes.size(), kAdlerRun));
    bytes = bytes.subspan(run.size());
    for (const uint8_t byte : run) {
      low += byte;
      high += low;
    }
    low %= kAdlerModulus;
    high %= kAdlerModulus;
  }
  return high << 16 | low;
}

}  // namespace vorc
