#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "codec/little_endian.h"

namespace vorc {

/// Packs numbers into bytes, lowest bit first. Once the target is full it drops what comes.
class BitWriter {
 public:
  explicit BitWriter(std::span<uint8_t> target) : target_(target) {}

  /// Appends the low `count` bits, at most 32; those above must be zero.
  void Put(uint64_t bits, unsigned count) {
    pending_ |= bits << pending_count_;
    pending_count_ += count;
    if (pending_count_ >= 32) Flush(4);
  }

  /// Fills the last byte up with zeros.
  void Finish() { Flush((pending_count_ + 7) / 8); }

  /// Bytes written.
  size_t size() const { return size_; }
  /// True once something found no room.
  bool full() const { return full_; }

 private:
  void Flush(unsigned bytes) {
    if (target_.size() - size_ < bytes) {
      full_ = true;
    } else {
      StoreLittle(&target_[size_], pending_, static_cast<int>(bytes));
      size_ += bytes;
    }
    pending_ >>= 8 * bytes;
    pending_count_ -= pending_count_ < 8 * bytes ? pending_count_ : 8 * bytes;
  }

  std::span<uint8_t> target_;
  size_t size_ = 0;
  uint64_t pending_ = 0;
  unsigned pending_count_ = 0;
  bool full_ = false;
};

}  // namespace vorc
