#include "codes/qr_symbol.h"

#include <algorithm>
#include <cstdlib>

namespace vorc::codes {

const uint8_t qr_num_blocks[kQrLevels][kMaxQrVersion + 1] = {
    {0, 1, 1, 1,  1,  1,  2,  2,  2,  2,  4,  4,  4,  4,  4,  6,  6,  6,  6,  7, 8,
     8, 9, 9, 10, 12, 12, 12, 13, 14, 15, 16, 17, 18, 19, 19, 20, 21, 22, 24, 25},
    {0,  1,  1,  1,  2,  2,  4,  4,  4,  5,  5,  5,  8,  9,  9,  10, 10, 11, 13, 14, 16,
     17, 17, 18, 20, 21, 23, 25, 26, 28, 29, 31, 33, 35, 37, 38, 40, 43, 45, 47, 49},
    {0,  1,  1,  2,  2,  4,  4,  6,  6,  8,  8,  8,  10, 12, 16, 12, 17, 16, 18, 21, 20,
     23, 23, 25, 27, 29, 34, 34, 35, 38, 40, 43, 45, 48, 51, 53, 56, 59, 62, 65, 68},
    {0,  1,  1,  2,  4,  4,  4,  5,  6,  8,  8,  11, 11, 16, 16, 18, 16, 19, 21, 25, 25,
     25, 34, 30, 32, 35, 37, 40, 42, 45, 48, 51, 54, 57, 60, 63, 66, 70, 74, 77, 81},
};

const uint8_t qr_ecc_per_block[kQrLevels][kMaxQrVersion + 1] = {
    {0,  7,  10, 15, 20, 26, 18, 20, 24, 30, 18, 20, 24, 26, 30, 22, 24, 28, 30, 28, 28,
     28, 28, 30, 30, 26, 28, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30},
    {0,  10, 16, 26, 18, 24, 16, 18, 22, 22, 26, 30, 22, 22, 24, 24, 28, 28, 26, 26, 26,
     26, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28},
    {0,  13, 22, 18, 26, 18, 24, 18, 22, 20, 24, 28, 26, 24, 20, 30, 24, 28, 28, 26, 30,
     28, 30, 30, 30, 30, 28, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30},
    {0,  17, 28, 22, 16, 22, 28, 26, 26, 24, 28, 24, 28, 22, 24, 24, 30, 28, 28, 26, 28,
     30, 24, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30},
};

const uint8_t qr_level_bits[kQrLevels] = {1, 0, 3, 2};

namespace {

constexpr int kFormatGenerator = 1335;
constexpr int kFormatMask = 0x5412;
constexpr int kFormatBits = 15;
constexpr int kVersionGenerator = 7973;
constexpr int kVersionBits = 18;
constexpr int kFirstWithVersionBits = 7;
constexpr int kTiming = 6;
constexpr int kFinderCentre = 3;
constexpr int kFinderRadius = 4;  // with the light separator
constexpr int kAlignmentRadius = 2;

void SetFunction(MorvQrSymbol& symbol, QrCell cell, bool dark) {
  const size_t at = MorvQrSymbol::At(cell.x, cell.y);
  symbol.modules[at] = dark ? 1 : 0;
  symbol.is_function[at] = 1;
}

// The word with the check bits of a BCH code behind it.
int WithCheckBits(int word, int generator, int check_bits) {
  int remainder = word;
  for (int i = 0; i < check_bits; ++i)
    remainder = (remainder << 1) ^ ((remainder >> (check_bits - 1)) * generator);
  return (word << check_bits) | remainder;
}

void qr_finder(MorvQrSymbol& symbol, int centre_x, int centre_y) {
  for (int dy = -kFinderRadius; dy <= kFinderRadius; ++dy) {
    for (int dx = -kFinderRadius; dx <= kFinderRadius; ++dx) {
      const QrCell cell{centre_x + dx, centre_y + dy};
      if (cell.x < 0 || cell.y < 0 || cell.x >= symbol.size || cell.y >= symbol.size) continue;
      const int distance = std::max(std::abs(dx), std::abs(dy));
      SetFunction(symbol, cell, distance != 2 && distance != kFinderRadius);
    }
  }
}

void DrawAlignment(MorvQrSymbol& symbol, int centre_x, int centre_y) {
  for (int dy = -kAlignmentRadius; dy <= kAlignmentRadius; ++dy)
    for (int dx = -kAlignmentRadius; dx <= kAlignmentRadius; ++dx)
      SetFunction(symbol, {centre_x + dx, centre_y + dy}, std::max(std::abs(dx), std::abs(dy)) != 1);
}

void DrawAlignments(MorvQrSymbol& symbol) {
  const std::vector<int> positions = qr_align_positions(symbol.version);
  for (const int y : positions) {
    for (const int x : positions) {
      const bool at_finder = (x == kTiming && (y == kTiming || y == positions.back())) ||
                             (x == positions.back() && y == kTiming);
      if (!at_finder) DrawAlignment(symbol, x, y);
    }
  }
}

void DrawVersion(MorvQrSymbol& symbol) {
  if (symbol.version < kFirstWithVersionBits) return;
  const int word = QrVersionWord(symbol.version);
  for (int bit = 0; bit < kVersionBits; ++bit)
    for (const int copy : {0, 1})
      SetFunction(symbol, QrVersionCell(copy, bit, symbol.size), ((word >> bit) & 1) != 0);
}

}  // namespace

int qr_raw_data_modules(int version) {
  int modules = (16 * version + 128) * version + 64;
  if (version >= 2) {
    const int align = version / 7 + 2;
    modules -= (25 * align - 10) * align - 55;
    if (version >= kFirstWithVersionBits) modules -= 36;
  }
  return modules;
}

int QrDataCodewords(int version, int level) {
  return qr_raw_data_modules(version) / 8 - qr_ecc_per_block[level][version] * qr_num_blocks[level][version];
}

QrBlocks QrBlocksOf(int version, int level) {
  const int raw = qr_raw_data_modules(version) / 8;
  const int count = qr_num_blocks[level][version];
  const int ecc_length = qr_ecc_per_block[level][version];
  return {count, ecc_length, raw / count - ecc_length, count - raw % count};
}

std::vector<int> qr_align_positions(int version) {
  if (version == 1) return {};
  const int count = version / 7 + 2;
  const int step = version == 32 ? 26 : (2 * (2 * version + count) + 1) / (2 * (count - 1)) * 2;
  std::vector<int> positions(static_cast<size_t>(count), kTiming);
  int position = 4 * version + 10;
  for (size_t i = positions.size() - 1; i >= 1; --i, position -= step) positions[i] = position;
  return positions;
}

int QrFormatWord(int level, int mask) {
  return WithCheckBits((qr_level_bits[level] << 3) | mask, kFormatGenerator, 10) ^ kFormatMask;
}

int QrVersionWord(int version) {
  return WithCheckBits(version, kVersionGenerator, 12);
}

QrCell QrFormatCell(int copy, int bit, int size) {
  if (copy == 0) {
    if (bit < 6) return {8, bit};
    if (bit < 8) return {8, bit + 1};
    if (bit == 8) return {7, 8};
    return {14 - bit, 8};
  }
  if (bit < 8) return {size - 1 - bit, 8};
  return {8, size - kFormatBits + bit};
}

QrCell QrVersionCell(int copy, int bit, int size) {
  const int along = size - 11 + bit % 3;
  const int across = bit / 3;
  return copy == 0 ? QrCell{along, across} : QrCell{across, along};
}

void qr_draw_format(MorvQrSymbol& symbol, int level, int mask) {
  const int word = QrFormatWord(level, mask);
  for (int bit = 0; bit < kFormatBits; ++bit)
    for (const int copy : {0, 1})
      SetFunction(symbol, QrFormatCell(copy, bit, symbol.size), ((word >> bit) & 1) != 0);
  SetFunction(symbol, {8, symbol.size - 8}, true);
}

void qr_draw_function_patterns(MorvQrSymbol& symbol, int version, int level) {
  symbol.version = version;
  symbol.size = QrSize(version);
  symbol.modules.fill(0);
  symbol.is_function.fill(0);
  for (int i = 0; i < symbol.size; ++i) {
    SetFunction(symbol, {kTiming, i}, i % 2 == 0);
    SetFunction(symbol, {i, kTiming}, i % 2 == 0);
  }
  const int far = symbol.size - 1 - kFinderCentre;
  qr_finder(symbol, kFinderCentre, kFinderCentre);
  qr_finder(symbol, far, kFinderCentre);
  qr_finder(symbol, kFinderCentre, far);
  DrawAlignments(symbol);
  qr_draw_format(symbol, level, 0);
  DrawVersion(symbol);
}

namespace {

constexpr bool MaskFormula(int mask, int x, int y) {
  switch (mask) {
    case 0: return (x + y) % 2 == 0;
    case 1: return y % 2 == 0;
    case 2: return x % 3 == 0;
    case 3: return (x + y) % 3 == 0;
    case 4: return (x / 3 + y / 2) % 2 == 0;
    case 5: return x * y % 2 + x * y % 3 == 0;
    case 6: return (x * y % 2 + x * y % 3) % 2 == 0;
    default: return ((x + y) % 2 + x * y % 3) % 2 == 0;
  }
}

constexpr int kMaskPeriod = 12;  // of every formula, in both directions

using MaskRow = std::array<uint8_t, kMaskPeriod>;
using MaskPattern = std::array<MaskRow, kMaskPeriod>;

constexpr std::array<MaskPattern, kQrMasks> MakeMaskPatterns() {
  std::array<MaskPattern, kQrMasks> patterns{};
  for (size_t mask = 0; mask < patterns.size(); ++mask)
    for (size_t y = 0; y < kMaskPeriod; ++y)
      for (size_t x = 0; x < kMaskPeriod; ++x)
        patterns[mask][y][x] =
            MaskFormula(static_cast<int>(mask), static_cast<int>(x), static_cast<int>(y)) ? 1 : 0;
  return patterns;
}

constexpr std::array<MaskPattern, kQrMasks> kMaskPatterns = MakeMaskPatterns();

const MaskRow& MaskRowOf(int mask, int y) {
  return kMaskPatterns[static_cast<size_t>(mask)][static_cast<size_t>(y % kMaskPeriod)];
}

}  // namespace

bool QrMaskBit(int mask, int x, int y) {
  return MaskRowOf(mask, y)[static_cast<size_t>(x % kMaskPeriod)] != 0;
}

void qr_apply_mask(MorvQrSymbol& symbol, int mask) {
  for (int y = 0; y < symbol.size; ++y) {
    const MaskRow& pattern = MaskRowOf(mask, y);
    for (int left = 0; left < symbol.size; left += kMaskPeriod) {
      const int count = std::min(kMaskPeriod, symbol.size - left);
      const size_t at = MorvQrSymbol::At(left, y);
      for (size_t i = 0; i < static_cast<size_t>(count); ++i)
        symbol.modules[at + i] ^= symbol.is_function[at + i] == 0 ? pattern[i] : uint8_t{0};
    }
  }
}

}  // namespace vorc::codes
