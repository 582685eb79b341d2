#pragma once

#include <string>
#include <string_view>

namespace vorc {

/// Text as it stands in HTML and SVG.
inline std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&': escaped += "&amp;"; break;
      case '<': escaped += "&lt;"; break;
      case '>': escaped += "&gt;"; break;
      case '"': escaped += "&quot;"; break;
      default: escaped += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
  }
  return escaped;
}

/// The colour that stands for a general register; grey for memory (-1).
inline std::string RegisterColour(int number) {
  constexpr int kHueStep = 47;  // neighbours in number are far apart in hue
  if (number < 0) return "#c4c9ce";
  return "hsl(" + std::to_string(number * kHueStep % 360) + ",62%,72%)";
}

}  // namespace vorc
