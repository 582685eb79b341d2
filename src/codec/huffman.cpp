#include "codec/huffman.h"

#include <algorithm>

namespace vorc {

bool HuffmanDecoder::Build(std::span<const uint8_t> lengths) {
  counts_.fill(0);
  for (const uint8_t length : lengths) ++counts_[length];
  counts_[0] = 0;
  std::array<uint16_t, kMaxCodeLength + 2> first_index{};
  std::array<uint32_t, kMaxCodeLength + 2> next_code{};
  for (size_t length = 1; length <= kMaxCodeLength; ++length) {
    first_index[length + 1] = static_cast<uint16_t>(first_index[length] + counts_[length]);
    const uint32_t end = next_code[length] + counts_[length];
    if (end > 1U << length) return false;
    next_code[length + 1] = end << 1;
  }
  table_.fill({});
  for (size_t symbol = 0; symbol < lengths.size(); ++symbol) {
    const uint8_t length = lengths[symbol];
    if (length == 0) continue;
    symbols_[first_index[length]++] = static_cast<uint16_t>(symbol);
    const uint32_t code = next_code[length]++;
    if (length > kTableBits) continue;
    for (size_t i = ReverseBits(code, length); i < kTableSize; i += size_t{1} << length) {
      table_[i] = {static_cast<uint16_t>(symbol), length};
    }
  }
  return true;
}

int HuffmanDecoder::DecodeLong(BitReader& in) const {
  uint32_t code = 0;
  uint32_t first = 0;
  uint32_t index = 0;
  const unsigned longest = std::min<unsigned>(kMaxCodeLength, in.ready());
  for (unsigned length = 1; length <= longest; ++length) {
    code |= static_cast<uint32_t>(in.peek() >> (length - 1) & 1);
    const uint32_t count = counts_[length];
    if (code - first < count) {
      in.Skip(length);
      return symbols_[index + code - first];
    }
    index += count;
    first = (first + count) << 1;
    code <<= 1;
  }
  return -1;
}

}  // namespace vorc
