#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorc::codes {

/// A barcode as an SVG document of `scale` pixels a module (0 or less is 4, above 40 is 40), with its
/// text below. `kind` is "code128" (1 to 80 printable ASCII characters), "ean13" or "ean" (12 digits, or
/// 13 whose check digit holds), "upca" or "upc" (11 or 12). Nothing for any other kind or text.
std::optional<std::string> MorvBarcodeSvg(std::string_view text, std::string_view kind, int scale);

}  // namespace vorc::codes
