#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "codec/little_endian.h"

namespace vorc {

/// Takes numbers out of bytes, lowest bit first.
class BitReader {
 public:
  explicit BitReader(std::span<const uint8_t> source)
      : next_(source.data()), end_(source.data() + source.size()) {}

  /// Makes at least 48 bits ready, or all that are left.
  void Refill() {
    if (end_ - next_ >= 8) {
      bits_ |= LoadLittle64(next_) << count_;
      next_ += (63 - count_) / 8;
      count_ |= 56;
      return;
    }
    for (; count_ <= 48 && next_ != end_; count_ += 8) bits_ |= uint64_t{*next_++} << count_;
  }

  /// The bits that are ready, lowest first.
  uint64_t peek() const { return bits_; }
  /// How many of them there are; those above may be anything.
  unsigned ready() const { return count_; }

  /// Drops bits that are ready.
  void Skip(unsigned count) {
    bits_ >>= count;
    count_ -= count;
  }

  /// Takes bits that may not be ready. False, and nothing taken, if fewer than that are left.
  bool Take(unsigned count, uint32_t& value) {
    Refill();
    if (count_ < count) return false;
    value = static_cast<uint32_t>(bits_ & ((uint64_t{1} << count) - 1));
    Skip(count);
    return true;
  }

  /// Drops what is left of a byte begun, and gives the whole bytes behind it.
  std::span<const uint8_t> RestOfBytes() {
    Skip(count_ % 8);
    next_ -= count_ / 8;
    bits_ = 0;
    count_ = 0;
    return {next_, end_};
  }

  /// Passes over bytes that `RestOfBytes` gave.
  void SkipBytes(size_t count) { next_ += count; }

 private:
  const uint8_t* next_;
  const uint8_t* end_;
  uint64_t bits_ = 0;
  unsigned count_ = 0;
};

}  // namespace vorc
