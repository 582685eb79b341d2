#pragma once

#include <charconv>
#include <string>

namespace vorc::codes {

/// Pixels a module for the scale that a caller asked for: 0 or less is 4, above 40 is 40.
inline int PixelScale(int scale) {
  constexpr int kDefault = 4;
  constexpr int kMax = 40;
  if (scale <= 0) return kDefault;
  return scale > kMax ? kMax : scale;
}

inline void Append(std::string& out, const char* text) {
  out += text;
}

inline void Append(std::string& out, int number) {
  char digits[16];
  out.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

/// Appends texts and numbers in turn.
template <typename... Pieces>
void AppendAll(std::string& out, const Pieces&... pieces) {
  (Append(out, pieces), ...);
}

/// The opening element of a drawing of `width` x `height` modules, and its white background.
inline std::string SvgHead(int width, int height, int scale, const char* label) {
  std::string svg;
  AppendAll(svg, "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"", width * scale, "\" height=\"",
            height * scale, "\" viewBox=\"0 0 ", width, " ", height,
            "\" shape-rendering=\"crispEdges\" role=\"img\" aria-label=\"", label,
            "\"><rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>");
  return svg;
}

}  // namespace vorc::codes
