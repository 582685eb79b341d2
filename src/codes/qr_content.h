#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "codes/qr_symbol.h"

namespace vorc::codes {

struct QrFormat {
  int level;
  int mask;
};

/// The format that the nearer of a symbol's two format words stands for; nothing above 3 wrong bits.
std::optional<QrFormat> read_format(const MorvQrSymbol& symbol);

/// The version that the nearer of the two version blocks tells, or 0 above 3 wrong bits.
int ReadVersion(const MorvQrSymbol& symbol);

/// The mended data codewords of a symbol; nothing if a block is beyond repair. Marks the symbol's
/// function patterns on the way.
std::optional<std::vector<uint8_t>> ReadCodewords(MorvQrSymbol& symbol, const QrFormat& format);

/// The text that data codewords of a version hold; nothing if they are no valid row of segments.
std::optional<std::string> ParseCodewords(std::span<const uint8_t> data, int version);

}  // namespace vorc::codes
