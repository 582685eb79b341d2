#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "codec/deflate_codes.h"

// Greedy compression into one block of fixed codes, done the obvious way: heads, a chain of links, and
// bits in a row. What the fast one must write to the bit.
class PlainDeflate {
 public:
  static std::vector<uint8_t> Compress(const std::vector<uint8_t>& text) {
    PlainDeflate work(text);
    work.Run();
    return work.Bytes();
  }

 private:
  explicit PlainDeflate(const std::vector<uint8_t>& text) : text_(text) {}

  void Run() {
    bits_ = "110";
    for (int64_t at = 0; at < Size();) {
      const auto [length, distance] = Longest(at);
      if (length < 3) {
        Symbol(text_[static_cast<size_t>(at)]);
      } else {
        WithExtra(length, vorc::vz_len_base, vorc::vz_len_extra, [&](int code) { Symbol(257 + code); });
        WithExtra(distance, vorc::vz_dist_base, vorc::vz_dist_extra, [&](int code) { Code(code, 5); });
      }
      for (const int64_t end = at + std::max<int64_t>(length, 1); at < end; ++at) Insert(at);
    }
    Symbol(256);
  }

  struct Found {
    int64_t length = 0, distance = 0;
  };

  Found Longest(int64_t at) const {
    Found best;
    if (Size() - at < 3) return best;
    int tried = 0;
    for (int64_t c = heads_[Hash(at)]; c >= 0 && at - c <= 32768 && tried < 128; ++tried) {
      int64_t length = 0;
      while (length < 258 && at + length < Size() && At(c + length) == At(at + length)) ++length;
      if (length > best.length) best = {length, at - c};
      if (length == 258) break;
      c = chain_[static_cast<size_t>(c % 32768)];
    }
    return best;
  }

  void Insert(int64_t at) {
    if (Size() - at < 3) return;
    chain_[static_cast<size_t>(at % 32768)] = heads_[Hash(at)];
    heads_[Hash(at)] = at;
  }

  // A table's last fitting base wins.
  template <typename Bases, typename Extras, typename Put>
  void WithExtra(int64_t value, const Bases& bases, const Extras& extras, Put put) {
    size_t code = bases.size() - 1;
    while (bases[code] > value) --code;
    put(static_cast<int>(code));
    for (int bit = 0; bit < extras[code]; ++bit) bits_ += ((value - bases[code]) >> bit & 1) != 0 ? '1' : '0';
  }

  void Symbol(int symbol) {
    if (symbol < 144)
      Code(0x30 + symbol, 8);
    else if (symbol < 256)
      Code(0x190 + symbol - 144, 9);
    else if (symbol < 280)
      Code(symbol - 256, 7);
    else
      Code(0xC0 + symbol - 280, 8);
  }

  void Code(int code, int count) {
    while (count-- > 0) bits_ += (code >> count & 1) != 0 ? '1' : '0';
  }

  std::vector<uint8_t> Bytes() const {
    std::vector<uint8_t> bytes((bits_.size() + 7) / 8);
    for (size_t i = 0; i < bits_.size(); ++i) {
      bytes[i / 8] = static_cast<uint8_t>(bytes[i / 8] | (bits_[i] - '0') << i % 8);
    }
    return bytes;
  }

  int64_t Size() const { return static_cast<int64_t>(text_.size()); }
  uint32_t At(int64_t at) const { return text_[static_cast<size_t>(at)]; }
  size_t Hash(int64_t at) const { return (At(at) << 10 ^ At(at + 1) << 5 ^ At(at + 2)) & 0x7FFF; }

  const std::vector<uint8_t>& text_;
  std::string bits_;
  std::vector<int64_t> heads_ = std::vector<int64_t>(32768, -1);
  std::vector<int64_t> chain_ = std::vector<int64_t>(32768, -1);
};
