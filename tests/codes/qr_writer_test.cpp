#include "codes/qr_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "pictures.h"

namespace vorc::codes {
namespace {

bool StartsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

int VersionOf(const std::string& svg) {
  return (DrawingOfSvg(svg).width - 8 - 17) / 4;
}

TEST(QrWriter, TextOfTheDrawing) {
  EXPECT_TRUE(
      StartsWith(MorvQrcodeSvg("A", 3).value(),
                 "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"87\" height=\"87\" viewBox=\"0 0 29 29\" "
                 "shape-rendering=\"crispEdges\" role=\"img\" aria-label=\"QR code\">"
                 "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/><path fill=\"#000\" d=\"M4 4h7v1h-7z"));
  const struct {
    int scale;
    const char* width;
  } scales[] = {{0, "116"}, {-3, "116"}, {1, "29"}, {40, "1160"}, {500, "1160"}};
  for (const auto& test : scales)
    EXPECT_NE(MorvQrcodeSvg("A", test.scale)->find(std::string("width=\"") + test.width + "\""),
              std::string::npos);
}

TEST(QrWriter, LowestVersionThatHoldsTheText) {
  const struct {
    size_t length;
    int version;
  } cases[] = {{1, 1}, {17, 1}, {18, 2}, {230, 9}, {231, 10}, {271, 10}, {272, 11}, {2303, 35}, {2331, 36}};
  for (const auto& test : cases)
    EXPECT_EQ(VersionOf(*MorvQrcodeSvg(std::string(test.length, 'x'), 1)), test.version);
  EXPECT_FALSE(MorvQrcodeSvg("", 4));
  EXPECT_FALSE(MorvQrcodeSvg(std::string(2332, 'x'), 4));
}

// The penalty by another road: each line as text, with the light border written out.
int64_t PenaltyOfLine(const std::string& line) {
  int64_t penalty = 0;
  for (size_t i = 0; i < line.size();) {
    const size_t end = std::min(line.find_first_not_of(line[i], i), line.size());
    if (end - i >= 5) penalty += static_cast<int64_t>(end - i) - 2;
    i = end;
  }
  const std::string border(line.size(), '0'), whole = border + line + border;
  for (size_t n = 1; 7 * n <= line.size(); ++n) {
    const std::string one(n, '1'), zero(n, '0');
    const std::string core = one + zero + one + one + one + zero + one, light(4 * n, '0');
    for (size_t at = whole.find("0" + core + "0"); at != std::string::npos;
         at = whole.find("0" + core + "0", at + 1)) {
      if (whole.compare(at + 1 - light.size(), light.size(), light) == 0) penalty += 40;
      if (whole.compare(at + 1 + core.size(), light.size(), light) == 0) penalty += 40;
    }
  }
  return penalty;
}

int64_t ReferencePenalty(const MorvQrSymbol& symbol) {
  int64_t penalty = 0, dark = 0;
  for (int i = 0; i < symbol.size; ++i) {
    std::string row, column;
    for (int j = 0; j < symbol.size; ++j) {
      row += symbol.Dark(j, i) ? '1' : '0';
      column += symbol.Dark(i, j) ? '1' : '0';
      dark += symbol.Dark(i, j) ? 1 : 0;
      if (i == 0 || j == 0) continue;
      const bool corner = symbol.Dark(i, j);
      if (symbol.Dark(i - 1, j) == corner && symbol.Dark(i, j - 1) == corner &&
          symbol.Dark(i - 1, j - 1) == corner)
        penalty += 3;
    }
    penalty += PenaltyOfLine(row) + PenaltyOfLine(column);
  }
  const double share = 20.0 * static_cast<double>(dark) / (symbol.size * symbol.size);
  return penalty + 10 * std::max<int64_t>(0, static_cast<int64_t>(std::ceil(std::abs(share - 10))) - 1);
}

TEST(QrWriter, PenaltyAndTheMaskThatHasLeast) {
  const auto symbol = std::make_unique<MorvQrSymbol>();
  Dice dice(5);
  for (const int version : {1, 2, 7, 14, 27}) {
    std::vector<uint8_t> data(static_cast<size_t>(QrDataCodewords(version, kQrLevelQ)));
    for (uint8_t& byte : data) byte = static_cast<uint8_t>(dice.Below(3) == 0 ? dice.Below(256) : 0);
    int64_t least = INT64_MAX;
    std::array<uint8_t, kMaxQrSize * kMaxQrSize> best{};
    for (int mask = 0; mask < kQrMasks; ++mask) {
      DrawQrSymbol(*symbol, version, kQrLevelQ, data, mask);
      const int64_t penalty = ReferencePenalty(*symbol);
      EXPECT_EQ(QrPenalty(*symbol), penalty) << version << " " << mask;
      if (penalty >= least) continue;
      least = penalty;
      best = symbol->modules;
    }
    DrawQrSymbol(*symbol, version, kQrLevelQ, data);
    EXPECT_EQ(symbol->modules, best) << version;
  }
}

}  // namespace
}  // namespace vorc::codes
