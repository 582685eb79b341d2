#include "codes/qr_content.h"

#include <algorithm>
#include <bit>
#include <memory>

#include "codes/galois.h"

namespace vorc::codes {

namespace {

constexpr int kMaxWrongBits = 3;
constexpr int kFormatBits = 15;
constexpr int kVersionBits = 18;
constexpr int kFirstWithVersionBits = 7;

int Distance(int a, int b) {
  return std::popcount(static_cast<unsigned>(a ^ b));
}

template <typename CellOf>
int ReadWord(const MorvQrSymbol& symbol, int bits, int copy, CellOf cell_of) {
  int word = 0;
  for (int bit = 0; bit < bits; ++bit) {
    const QrCell cell = cell_of(copy, bit, symbol.size);
    if (symbol.Dark(cell.x, cell.y)) word |= 1 << bit;
  }
  return word;
}

std::vector<uint8_t> RawCodewords(MorvQrSymbol& symbol, const QrFormat& format) {
  const auto patterns = std::make_unique<MorvQrSymbol>();
  qr_draw_function_patterns(*patterns, symbol.version, format.level);
  symbol.is_function = patterns->is_function;
  std::vector<uint8_t> codewords(static_cast<size_t>(qr_raw_data_modules(symbol.version) / 8), 0);
  size_t bit = 0;
  ForEachDataModule(symbol, [&](int x, int y) {
    if (bit >= 8 * codewords.size()) return;
    if (symbol.Dark(x, y) != QrMaskBit(format.mask, x, y))
      codewords[bit / 8] |= static_cast<uint8_t>(0x80 >> (bit % 8));
    ++bit;
  });
  return codewords;
}

// A block's codewords out of the interleaved ones, data before check.
std::vector<uint8_t> BlockOf(std::span<const uint8_t> codewords, const QrBlocks& blocks, int block) {
  const int short_round = blocks.short_data_length * blocks.count;
  const int ecc_start = short_round + blocks.count - blocks.short_count;
  std::vector<uint8_t> symbols;
  const auto take = [&](int at) { symbols.push_back(codewords[static_cast<size_t>(at)]); };
  for (int i = 0; i < blocks.short_data_length; ++i) take(i * blocks.count + block);
  if (block >= blocks.short_count) take(short_round + block - blocks.short_count);
  for (int i = 0; i < blocks.ecc_length; ++i) take(ecc_start + i * blocks.count + block);
  return symbols;
}

class BitReader {
 public:
  explicit BitReader(std::span<const uint8_t> bytes) : bytes_(bytes) {}

  size_t left() const { return 8 * bytes_.size() - at_; }

  std::optional<unsigned> Take(int bits) {
    if (left() < static_cast<size_t>(bits)) return std::nullopt;
    unsigned value = 0;
    for (int i = 0; i < bits; ++i, ++at_) value = (value << 1) | ((bytes_[at_ / 8] >> (7 - at_ % 8)) & 1U);
    return value;
  }
  bool Skip(int bits) { return Take(bits).has_value(); }

 private:
  std::span<const uint8_t> bytes_;
  size_t at_ = 0;
};

constexpr int kModeBits = 4;
enum Mode : unsigned {
  kEnd = 0,
  kNumeric = 1,
  kAlphanumeric = 2,
  kStructuredAppend = 3,
  kByte = 4,
  kFnc1First = 5,
  kEci = 7,
  kKanji = 8,
  kFnc1Second = 9,
};

// Width of a segment's character count, by version groups.
int CountBits(unsigned mode, int version) {
  const size_t group = version < 10 ? 0 : version < 27 ? 1 : 2;
  constexpr int kNumericBits[] = {10, 12, 14};
  constexpr int kAlphanumericBits[] = {9, 11, 13};
  constexpr int kByteBits[] = {8, 16, 16};
  constexpr int kKanjiBits[] = {8, 10, 12};
  switch (mode) {
    case kNumeric: return kNumericBits[group];
    case kAlphanumeric: return kAlphanumericBits[group];
    case kByte: return kByteBits[group];
    default: return kKanjiBits[group];
  }
}

bool TakeNumeric(BitReader& bits, unsigned count, std::string& out) {
  constexpr int kBitsOf[] = {0, 4, 7, 10};
  constexpr unsigned kEndOf[] = {0, 10, 100, 1000};
  while (count > 0) {
    const unsigned digits = std::min(count, 3U);
    const auto value = bits.Take(kBitsOf[digits]);
    if (!value || *value >= kEndOf[digits]) return false;
    for (unsigned unit = kEndOf[digits] / 10; unit > 0; unit /= 10)
      out += static_cast<char>('0' + *value / unit % 10);
    count -= digits;
  }
  return true;
}

bool TakeAlphanumeric(BitReader& bits, unsigned count, std::string& out) {
  constexpr char kAlphabet[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ $%*+-./:";
  constexpr unsigned kLetters = sizeof kAlphabet - 1;
  for (; count >= 2; count -= 2) {
    const auto value = bits.Take(11);
    if (!value || *value >= kLetters * kLetters) return false;
    out += kAlphabet[*value / kLetters];
    out += kAlphabet[*value % kLetters];
  }
  if (count == 0) return true;
  const auto value = bits.Take(6);
  if (!value || *value >= kLetters) return false;
  out += kAlphabet[*value];
  return true;
}

bool TakeBytes(BitReader& bits, unsigned count, std::string& out) {
  for (; count > 0; --count) {
    const auto value = bits.Take(8);
    if (!value) return false;
    out += static_cast<char>(*value);
  }
  return true;
}

// Shift JIS pairs.
bool TakeKanji(BitReader& bits, unsigned count, std::string& out) {
  constexpr unsigned kTrailBytes = 192;
  constexpr unsigned kEndOfFirstRange = 7869;
  for (; count > 0; --count) {
    const auto value = bits.Take(13);
    if (!value) return false;
    unsigned pair = (*value / kTrailBytes) << 8 | *value % kTrailBytes;
    pair += pair < kEndOfFirstRange ? 0x8140 : 0xC140;
    out += static_cast<char>(pair >> 8 & 0xFF);
    out += static_cast<char>(pair & 0xFF);
  }
  return true;
}

bool SkipEciDesignator(BitReader& bits) {
  const auto first = bits.Take(8);
  if (!first) return false;
  if (*first >> 6 == 2) return bits.Skip(8);
  if (*first >> 6 == 3) return bits.Skip(16);
  return true;
}

bool TakeSegment(BitReader& bits, unsigned mode, int version, std::string& out) {
  constexpr int kStructuredAppendBits = 16;
  switch (mode) {
    case kStructuredAppend: return bits.Skip(kStructuredAppendBits);
    case kEci: return SkipEciDesignator(bits);
    case kFnc1First:
    case kFnc1Second: return true;
    case kNumeric:
    case kAlphanumeric:
    case kByte:
    case kKanji: break;
    default: return false;
  }
  const auto count = bits.Take(CountBits(mode, version));
  if (!count) return false;
  switch (mode) {
    case kNumeric: return TakeNumeric(bits, *count, out);
    case kAlphanumeric: return TakeAlphanumeric(bits, *count, out);
    case kByte: return TakeBytes(bits, *count, out);
    default: return TakeKanji(bits, *count, out);
  }
}

}  // namespace

std::optional<QrFormat> read_format(const MorvQrSymbol& symbol) {
  const int words[] = {ReadWord(symbol, kFormatBits, 0, QrFormatCell),
                       ReadWord(symbol, kFormatBits, 1, QrFormatCell)};
  int least = kMaxWrongBits + 1;
  std::optional<QrFormat> best;
  for (int level = 0; level < kQrLevels; ++level) {
    for (int mask = 0; mask < kQrMasks; ++mask) {
      const int word = QrFormatWord(level, mask);
      const int distance = std::min(Distance(word, words[0]), Distance(word, words[1]));
      if (distance >= least) continue;
      least = distance;
      best = QrFormat{level, mask};
    }
  }
  return best;
}

int ReadVersion(const MorvQrSymbol& symbol) {
  const int words[] = {ReadWord(symbol, kVersionBits, 0, QrVersionCell),
                       ReadWord(symbol, kVersionBits, 1, QrVersionCell)};
  int least = kMaxWrongBits + 1;
  int best = 0;
  for (int version = kFirstWithVersionBits; version <= kMaxQrVersion; ++version) {
    const int word = QrVersionWord(version);
    const int distance = std::min(Distance(word, words[0]), Distance(word, words[1]));
    if (distance >= least) continue;
    least = distance;
    best = version;
  }
  return best;
}

std::optional<std::vector<uint8_t>> ReadCodewords(MorvQrSymbol& symbol, const QrFormat& format) {
  const std::vector<uint8_t> codewords = RawCodewords(symbol, format);
  const QrBlocks blocks = QrBlocksOf(symbol.version, format.level);
  std::vector<uint8_t> data;
  for (int i = 0; i < blocks.count; ++i) {
    std::vector<uint8_t> block = BlockOf(codewords, blocks, i);
    if (!RepairBlock(block, static_cast<size_t>(blocks.ecc_length))) return std::nullopt;
    data.insert(data.end(), block.begin(), block.end() - blocks.ecc_length);
  }
  return data;
}

std::optional<std::string> ParseCodewords(std::span<const uint8_t> data, int version) {
  BitReader bits(data);
  std::string text;
  while (bits.left() >= kModeBits) {
    const unsigned mode = *bits.Take(kModeBits);
    if (mode == kEnd) break;
    if (!TakeSegment(bits, mode, version, text)) return std::nullopt;
  }
  return text;
}

}  // namespace vorc::codes
