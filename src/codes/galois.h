#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vorc::codes {

/// Product in GF(256) over the polynomial 285, as QR codes use it.
uint8_t gf_mul(uint8_t a, uint8_t b);

/// Generator polynomial of Reed-Solomon codes of `degree` check symbols with the roots 2^0 upward:
/// its coefficients from the second highest power down, the leading 1 left out.
std::vector<uint8_t> ReedSolomonGenerator(size_t degree);

/// The check symbols of `data` under a generator, written to `remainder`, which is as long as it.
void ReedSolomonRemainder(std::span<const uint8_t> data, std::span<const uint8_t> generator,
                          std::span<uint8_t> remainder);

/// Mends a block in place whose last `ecc_length` symbols are check symbols (at most 62 of them).
/// False, with the block as it was, if more than half as many symbols are wrong.
bool RepairBlock(std::span<uint8_t> block, size_t ecc_length);

}  // namespace vorc::codes
