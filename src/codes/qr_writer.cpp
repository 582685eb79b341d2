#include "codes/qr_writer.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#include "codes/galois.h"
#include "codes/svg.h"

namespace vorc::codes {

namespace {

// Below what level L carries at version 40.
constexpr size_t kMaxText = 2331;
constexpr int kModeBits = 4;
constexpr int kByteMode = 4;
constexpr int kLastVersionOfShortCounts = 9;
constexpr int kQuietZone = 4;

constexpr int64_t kRunPenalty = 3;
constexpr int64_t kBlockPenalty = 3;
constexpr int64_t kFinderPenalty = 40;
constexpr int64_t kBalancePenalty = 10;
constexpr int kPenalizedRun = 5;

int CountBits(int version) {
  return version <= kLastVersionOfShortCounts ? 8 : 16;
}

int LowestVersionFor(size_t bytes) {
  for (int version = 1; version <= kMaxQrVersion; ++version) {
    const size_t bits = static_cast<size_t>(kModeBits + CountBits(version)) + 8 * bytes;
    if (bits <= 8 * static_cast<size_t>(QrDataCodewords(version, kQrLevelL))) return version;
  }
  return 0;
}

class BitWriter {
 public:
  explicit BitWriter(std::span<uint8_t> bytes) : bytes_(bytes) {}

  void Put(uint32_t value, int bits) {
    for (int i = bits - 1; i >= 0; --i, ++at_)
      bytes_[at_ / 8] |= static_cast<uint8_t>(((value >> i) & 1) << (7 - at_ % 8));
  }
  size_t room() const { return 8 * bytes_.size() - at_; }
  size_t whole_bytes() const { return (at_ + 7) / 8; }

 private:
  std::span<uint8_t> bytes_;
  size_t at_ = 0;
};

std::vector<uint8_t> ByteModeCodewords(std::string_view text, int version) {
  constexpr uint8_t kPads[] = {236, 17};
  std::vector<uint8_t> data(static_cast<size_t>(QrDataCodewords(version, kQrLevelL)), 0);
  BitWriter writer(data);
  writer.Put(kByteMode, kModeBits);
  writer.Put(static_cast<uint32_t>(text.size()), CountBits(version));
  for (const char byte : text) writer.Put(static_cast<uint8_t>(byte), 8);
  writer.Put(0, static_cast<int>(std::min<size_t>(kModeBits, writer.room())));
  for (size_t at = writer.whole_bytes(), pad = 0; at < data.size(); ++at, pad ^= 1) data[at] = kPads[pad];
  return data;
}

// Data codewords of all blocks in turn, then check codewords of all blocks in turn.
std::vector<uint8_t> Interleave(std::span<const uint8_t> data, const QrBlocks& blocks) {
  const size_t ecc_length = static_cast<size_t>(blocks.ecc_length);
  const auto generator = ReedSolomonGenerator(ecc_length);
  const size_t count = static_cast<size_t>(blocks.count);
  std::vector<uint8_t> codewords(data.size() + count * ecc_length);
  std::vector<uint8_t> ecc(ecc_length);
  size_t start = 0;
  for (size_t block = 0; block < count; ++block) {
    const size_t length = static_cast<size_t>(blocks.DataLength(static_cast<int>(block)));
    ReedSolomonRemainder(data.subspan(start, length), generator, ecc);
    for (size_t i = 0; i < ecc_length; ++i) codewords[data.size() + i * count + block] = ecc[i];
    const size_t common = static_cast<size_t>(blocks.short_data_length);
    for (size_t i = 0; i < common; ++i) codewords[i * count + block] = data[start + i];
    if (length > common)
      codewords[common * count + block - static_cast<size_t>(blocks.short_count)] = data[start + common];
    start += length;
  }
  return codewords;
}

void PlaceCodewords(MorvQrSymbol& symbol, std::span<const uint8_t> codewords) {
  size_t bit = 0;
  ForEachDataModule(symbol, [&](int x, int y) {
    if (bit >= 8 * codewords.size()) return;
    symbol.modules[MorvQrSymbol::At(x, y)] = (codewords[bit / 8] >> (7 - bit % 8)) & 1;
    ++bit;
  });
}

// The last seven run lengths of a row or column, the latest first. The first run counts as longer by
// a light border as wide as the symbol, and so does the last.
class RunHistory {
 public:
  explicit RunHistory(int size) : size_(size) {}

  void Add(int run) {
    if (runs_[0] == 0) run += size_;
    std::copy_backward(std::begin(runs_), std::end(runs_) - 1, std::end(runs_));
    runs_[0] = run;
  }

  // Finder-like patterns that end with the latest run, which is light.
  int qr_finder_like() const {
    const int n = runs_[1];
    const bool core = n >= 1 && runs_[2] == n && runs_[3] == 3 * n && runs_[4] == n && runs_[5] == n;
    if (!core) return 0;
    return (runs_[6] >= 4 * n ? 1 : 0) + (runs_[0] >= 4 * n ? 1 : 0);
  }

  int Terminate(bool dark, int run) {
    if (dark) {
      Add(run);
      run = 0;
    }
    Add(run + size_);
    return qr_finder_like();
  }

 private:
  int size_;
  int runs_[7] = {};
};

// One row (stride 1) or column (stride of the grid).
int64_t LinePenalty(const uint8_t* modules, int size, size_t stride) {
  int64_t penalty = 0;
  RunHistory history(size);
  uint8_t colour = 0;
  int run = 0;
  for (int i = 0; i < size; ++i, modules += stride) {
    if (*modules == colour) {
      ++run;
      if (run == kPenalizedRun) penalty += kRunPenalty;
      if (run > kPenalizedRun) ++penalty;
      continue;
    }
    history.Add(run);
    if (colour == 0) penalty += history.qr_finder_like() * kFinderPenalty;
    colour = *modules;
    run = 1;
  }
  return penalty + history.Terminate(colour != 0, run) * kFinderPenalty;
}

int64_t BlocksOfOneColour(const MorvQrSymbol& symbol) {
  int64_t blocks = 0;
  for (int y = 0; y + 1 < symbol.size; ++y) {
    const uint8_t* row = &symbol.modules[MorvQrSymbol::At(0, y)];
    const uint8_t* next = row + kMaxQrSize;
    for (int x = 0; x + 1 < symbol.size; ++x) {
      const int sum = row[x] + row[x + 1] + next[x] + next[x + 1];
      blocks += sum == 0 || sum == 4 ? 1 : 0;
    }
  }
  return blocks;
}

int64_t BalancePenalty(const MorvQrSymbol& symbol) {
  const int64_t total = static_cast<int64_t>(symbol.size) * symbol.size;
  const int64_t dark = std::count(symbol.modules.begin(), symbol.modules.end(), uint8_t{1});
  const int64_t steps = (std::abs(dark * 20 - total * 10) + total - 1) / total - 1;
  return steps * kBalancePenalty;
}

int LowestPenaltyMask(MorvQrSymbol& symbol, int level) {
  int best = 0;
  int64_t least = INT64_MAX;
  for (int mask = 0; mask < kQrMasks; ++mask) {
    qr_apply_mask(symbol, mask);
    qr_draw_format(symbol, level, mask);
    const int64_t penalty = QrPenalty(symbol);
    qr_apply_mask(symbol, mask);
    if (penalty >= least) continue;
    least = penalty;
    best = mask;
  }
  return best;
}

std::string SymbolSvg(const MorvQrSymbol& symbol, int scale) {
  const int side = symbol.size + 2 * kQuietZone;
  std::string svg = SvgHead(side, side, scale, "QR code");
  svg += "<path fill=\"#000\" d=\"";
  for (int y = 0; y < symbol.size; ++y) {
    for (int x = 0; x < symbol.size;) {
      const int start = x;
      while (x < symbol.size && symbol.Dark(x, y)) ++x;
      const int run = x - start;
      if (run > 0)
        AppendAll(svg, "M", start + kQuietZone, " ", y + kQuietZone, "h", run, "v1h-", run, "z");
      else
        ++x;
    }
  }
  return svg += "\"/></svg>";
}

}  // namespace

int64_t QrPenalty(const MorvQrSymbol& symbol) {
  int64_t penalty = kBlockPenalty * BlocksOfOneColour(symbol) + BalancePenalty(symbol);
  for (int i = 0; i < symbol.size; ++i) {
    penalty += LinePenalty(&symbol.modules[MorvQrSymbol::At(0, i)], symbol.size, 1);
    penalty += LinePenalty(&symbol.modules[MorvQrSymbol::At(i, 0)], symbol.size, kMaxQrSize);
  }
  return penalty;
}

void DrawQrSymbol(MorvQrSymbol& symbol, int version, int level, std::span<const uint8_t> data, int mask) {
  qr_draw_function_patterns(symbol, version, level);
  PlaceCodewords(symbol, Interleave(data, QrBlocksOf(version, level)));
  if (mask < 0) mask = LowestPenaltyMask(symbol, level);
  qr_apply_mask(symbol, mask);
  qr_draw_format(symbol, level, mask);
}

std::optional<std::string> MorvQrcodeSvg(std::string_view text, int scale) {
  if (text.empty() || text.size() > kMaxText) return std::nullopt;
  const int version = LowestVersionFor(text.size());
  const auto symbol = std::make_unique<MorvQrSymbol>();
  DrawQrSymbol(*symbol, version, kQrLevelL, ByteModeCodewords(text, version));
  return SymbolSvg(*symbol, PixelScale(scale));
}

}  // namespace vorc::codes
