#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "codes/qr_symbol.h"

namespace vorc::codes {

/// Fills a symbol with its data codewords (QrDataCodewords of them), check codewords added, under a
/// mask 0 to 7, or under the mask of the lowest penalty for -1.
void DrawQrSymbol(MorvQrSymbol& symbol, int version, int level, std::span<const uint8_t> data, int mask = -1);

/// The penalty of ISO/IEC 18004 for a finished symbol.
int64_t QrPenalty(const MorvQrSymbol& symbol);

/// A QR code of level L that holds the bytes of a text, as an SVG document of `scale` pixels a module
/// (0 or less is 4, above 40 is 40). Nothing for an empty text or one above 2331 bytes.
std::optional<std::string> MorvQrcodeSvg(std::string_view text, int scale);

}  // namespace vorc::codes
