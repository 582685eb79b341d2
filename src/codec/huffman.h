#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "codec/bit_reader.h"
#include "codec/deflate_codes.h"

namespace vorc {

/// Decodes one alphabet of canonical codes (RFC 1951, 3.2.2).
class HuffmanDecoder {
 public:
  /// Takes the code length of each symbol, 0 to 15, 0 for none. False if there are more codes than the
  /// lengths leave room for; fewer are allowed.
  bool Build(std::span<const uint8_t> lengths);

  /// The next symbol, from bits that are ready. -1 if they are no code or end within one.
  int Decode(BitReader& in) const {
    const Entry entry = table_[in.peek() & (kTableSize - 1)];
    if (entry.length == 0) return DecodeLong(in);
    if (entry.length > in.ready()) return -1;
    in.Skip(entry.length);
    return entry.symbol;
  }

 private:
  struct Entry {
    uint16_t symbol = 0;
    uint16_t length = 0;
  };

  static constexpr int kTableBits = 10;
  static constexpr size_t kTableSize = size_t{1} << kTableBits;

  int DecodeLong(BitReader& in) const;

  // Codes of up to kTableBits, by the bits that begin with them.
  std::array<Entry, kTableSize> table_;
  // How many codes each length has, and the symbols in the order of their codes.
  std::array<uint16_t, kMaxCodeLength + 1> counts_;
  std::array<uint16_t, kFixedLiteralCodes> symbols_;
};

}  // namespace vorc
