#include "codes/barcode_writer.h"

#include <algorithm>

#include "codes/barcode_tables.h"
#include "codes/svg.h"

namespace vorc::codes {

namespace {

constexpr int kQuietZone = 10;

constexpr size_t kMaxCode128Text = 80;
constexpr int kCode128Height = 64;
constexpr int kCode128BarHeight = 50;
constexpr int kCode128TextY = 61;

constexpr size_t kEanDigits = 13;
constexpr size_t kEanHalf = 6;
constexpr int kEanWidth = 115;
constexpr int kEanHeight = 69;
constexpr int kEanBarHeight = 50;
constexpr int kEanGuardHeight = 55;
constexpr int kEanTextY = 65;

constexpr const char* kBarsGroup = "<g fill=\"#000\">";

std::string EscapeText(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '<')
      escaped += "&lt;";
    else if (c == '&')
      escaped += "&amp;";
    else if (c == '>')
      escaped += "&gt;";
    else
      escaped += c;
  }
  return escaped;
}

// Bars and spaces in turn; returns where the next begins.
int emit_widths(std::string& svg, int x, std::string_view widths) {
  bool bar = true;
  for (const char digit : widths) {
    const int width = digit - '0';
    if (bar)
      AppendAll(svg, "<rect x=\"", x, "\" y=\"0\" width=\"", width, "\" height=\"", kCode128BarHeight,
                "\"/>");
    x += width;
    bar = !bar;
  }
  return x;
}

int emit_bits(std::string& svg, int x, std::string_view bits, int height) {
  for (const char bit : bits) {
    if (bit == '1') AppendAll(svg, "<rect x=\"", x, "\" y=\"0\" width=\"1\" height=\"", height, "\"/>");
    ++x;
  }
  return x;
}

std::optional<std::string> Code128Svg(std::string_view text, int scale) {
  const auto printable = [](char c) { return c >= 32 && c <= 126; };
  if (text.empty() || text.size() > kMaxCode128Text || !std::all_of(text.begin(), text.end(), printable))
    return std::nullopt;
  const int width = kCode128Modules * (static_cast<int>(text.size()) + 3) + 22;
  std::string svg = SvgHead(width, kCode128Height, scale, "Barcode") + kBarsGroup;
  int x = emit_widths(svg, kQuietZone, code128_widths[kCode128StartB]);
  int sum = kCode128StartB;
  for (size_t i = 0; i < text.size(); ++i) {
    const int value = text[i] - ' ';
    sum += value * static_cast<int>(i + 1);
    x = emit_widths(svg, x, code128_widths[value]);
  }
  x = emit_widths(svg, x, code128_widths[sum % kCode128CheckModulus]);
  emit_widths(svg, x, code128_widths[kCode128Stop]);
  AppendAll(svg, "</g><text x=\"", width / 2, "\" y=\"", kCode128TextY,
            "\" text-anchor=\"middle\" font-family=\"monospace\" font-size=\"9\" fill=\"#000\">");
  return svg + EscapeText(text) + "</text></svg>";
}

// All 13 digits, check digit included; nothing if the text can't be them.
std::optional<std::string> EanDigits(std::string_view text, bool is_upc) {
  const auto digit = [](char c) { return c >= '0' && c <= '9'; };
  std::string digits = is_upc ? "0" : "";
  digits += text;
  if (!std::all_of(text.begin(), text.end(), digit)) return std::nullopt;
  if (digits.size() != kEanDigits && digits.size() != kEanDigits - 1) return std::nullopt;
  const char check = static_cast<char>('0' + EanCheckDigit(digits));
  if (digits.size() < kEanDigits) digits += check;
  if (digits.back() != check) return std::nullopt;
  return digits;
}

void EmitEanBars(std::string& svg, std::string_view digits) {
  const char* parity = ean_parity[digits[0] - '0'];
  int x = emit_bits(svg, kQuietZone, "101", kEanGuardHeight);
  for (size_t i = 0; i < kEanHalf; ++i) {
    const auto& set = parity[i] == '1' ? ean_G : ean_L;
    x = emit_bits(svg, x, set[digits[1 + i] - '0'], kEanBarHeight);
  }
  x = emit_bits(svg, x, "01010", kEanGuardHeight);
  for (const char digit : digits.substr(1 + kEanHalf))
    x = emit_bits(svg, x, ean_R[digit - '0'], kEanBarHeight);
  emit_bits(svg, x, "101", kEanGuardHeight);
}

std::optional<std::string> barcode_ean13(std::string_view text, int scale, bool is_upc) {
  const auto digits = EanDigits(text, is_upc);
  if (!digits) return std::nullopt;
  std::string svg = SvgHead(kEanWidth, kEanHeight, scale, "Barcode") + kBarsGroup;
  EmitEanBars(svg, *digits);
  AppendAll(svg, "</g><g font-family=\"monospace\" font-size=\"9\" fill=\"#000\"><text x=\"", 2, "\" y=\"",
            kEanTextY, "\">", digits->substr(0, 1).c_str(), "</text>");
  AppendAll(svg, "<text x=\"", 34, "\" y=\"", kEanTextY, "\" text-anchor=\"middle\">",
            digits->substr(1, kEanHalf).c_str());
  AppendAll(svg, "</text><text x=\"", 81, "\" y=\"", kEanTextY, "\" text-anchor=\"middle\">",
            digits->substr(1 + kEanHalf).c_str(), "</text></g></svg>");
  return svg;
}

}  // namespace

std::optional<std::string> MorvBarcodeSvg(std::string_view text, std::string_view kind, int scale) {
  scale = PixelScale(scale);
  if (kind == "code128") return Code128Svg(text, scale);
  if (kind == "ean13" || kind == "ean") return barcode_ean13(text, scale, false);
  if (kind == "upca" || kind == "upc") return barcode_ean13(text, scale, true);
  return std::nullopt;
}

}  // namespace vorc::codes
