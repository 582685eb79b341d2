#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vorc::codes {

constexpr int kMaxQrVersion = 40;
constexpr int kMaxQrSize = 177;
constexpr int kQrLevels = 4;
constexpr int kQrMasks = 8;

/// Rows of the tables by error correction level.
enum QrLevel : int { kQrLevelL, kQrLevelM, kQrLevelQ, kQrLevelH };

/// A QR code's grid of modules (ISO/IEC 18004). The row stride is the same for every version.
struct MorvQrSymbol {
  int version = 0;                                             ///< 1 to 40
  int size = 0;                                                ///< modules a side
  std::array<uint8_t, kMaxQrSize * kMaxQrSize> modules{};      ///< 1 dark
  std::array<uint8_t, kMaxQrSize * kMaxQrSize> is_function{};  ///< non-zero on function patterns

  static constexpr size_t At(int x, int y) { return static_cast<size_t>(y * kMaxQrSize + x); }
  bool Dark(int x, int y) const { return modules[At(x, y)] != 0; }
  bool IsFunction(int x, int y) const { return is_function[At(x, y)] != 0; }
};

/// Block counts and check codewords a block, by level and version (index 0 unused).
extern const uint8_t qr_num_blocks[kQrLevels][kMaxQrVersion + 1];
extern const uint8_t qr_ecc_per_block[kQrLevels][kMaxQrVersion + 1];
/// The levels' bits in format words.
extern const uint8_t qr_level_bits[kQrLevels];

constexpr int QrSize(int version) {
  return 4 * version + 17;
}

/// Modules that hold data and check codewords, the remainder bits included.
int qr_raw_data_modules(int version);
int QrDataCodewords(int version, int level);

/// Lengths of the blocks that a symbol's codewords are split into; longer blocks come last.
struct QrBlocks {
  int count;
  int ecc_length;
  int short_data_length;  ///< data codewords of a short block; a long one holds one more
  int short_count;

  int DataLength(int block) const { return short_data_length + (block >= short_count ? 1 : 0); }
};
QrBlocks QrBlocksOf(int version, int level);

/// Centre coordinates of the alignment patterns along a side, ascending; none for version 1.
std::vector<int> qr_align_positions(int version);

/// The 15 bits of format information for a level and mask, the 18 of version information.
int QrFormatWord(int level, int mask);
int QrVersionWord(int version);

struct QrCell {
  int x;
  int y;
};
/// Where bit `i` (0 lowest) of a format word stands, in the copy at the first finder and in the split one.
QrCell QrFormatCell(int copy, int bit, int size);
/// Where bit `i` of a version word stands, at the top right (copy 0) or bottom left.
QrCell QrVersionCell(int copy, int bit, int size);

/// Makes the symbol one of `version` that holds its function patterns alone: timing, finders,
/// alignment, version bits, and format bits of mask 0 at `level`.
void qr_draw_function_patterns(MorvQrSymbol& symbol, int version, int level);
void qr_draw_format(MorvQrSymbol& symbol, int level, int mask);

/// True where mask 0 to 7 turns the module.
bool QrMaskBit(int mask, int x, int y);
/// Turns all modules of the mask outside function patterns; twice undoes it.
void qr_apply_mask(MorvQrSymbol& symbol, int mask);

/// Calls visit(x, y) for each module that holds codeword bits, in their order.
template <typename Visit>
void ForEachDataModule(const MorvQrSymbol& symbol, Visit visit) {
  constexpr int kTimingColumn = 6;
  bool upward = true;
  for (int right = symbol.size - 1; right >= 1; right -= 2, upward = !upward) {
    if (right == kTimingColumn) --right;
    for (int step = 0; step < symbol.size; ++step) {
      const int y = upward ? symbol.size - 1 - step : step;
      for (const int x : {right, right - 1})
        if (!symbol.IsFunction(x, y)) visit(x, y);
    }
  }
}

}  // namespace vorc::codes
