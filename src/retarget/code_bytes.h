#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace vorc {

/// Machine code as bytes, with what both encoders do to it. Words are four bytes, lowest first.
class CodeBytes {
 public:
  uint32_t size() const { return static_cast<uint32_t>(bytes_.size()); }
  std::span<const uint8_t> bytes() const { return bytes_; }

  /// False, with nothing appended, if the code would grow beyond all reason.
  bool Append(std::span<const uint8_t> bytes) {
    if (bytes.size() > kLimit - bytes_.size()) return false;
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return true;
  }

  bool AppendWord(uint32_t word) {
    const uint8_t bytes[] = {static_cast<uint8_t>(word), static_cast<uint8_t>(word >> 8),
                             static_cast<uint8_t>(word >> 16), static_cast<uint8_t>(word >> 24)};
    return Append(bytes);
  }

  /// A text and its final zero.
  bool AppendText(std::string_view text) {
    return Append({reinterpret_cast<const uint8_t*>(text.data()), text.size()}) && Append({{0}});
  }

  bool AppendZeros(size_t count) {
    if (count > kLimit - bytes_.size()) return false;
    bytes_.resize(bytes_.size() + count);
    return true;
  }

  /// Zeros up to a multiple of `n`; none for 0.
  bool Align(uint32_t n) { return n == 0 || size() % n == 0 || AppendZeros(n - size() % n); }

  bool HoldsWord(uint32_t offset) const { return offset <= size() && size() - offset >= 4; }

  /// The word at an offset that holds one.
  uint32_t Word(uint32_t offset) const {
    uint32_t word = 0;
    for (uint32_t i = 0; i < 4; ++i) word |= uint32_t{bytes_[offset + i]} << (8 * i);
    return word;
  }

  void SetWord(uint32_t offset, uint32_t word) {
    for (uint32_t i = 0; i < 4; ++i) bytes_[offset + i] = static_cast<uint8_t>(word >> (8 * i));
  }

 private:
  // Offsets fit 31 bits, so that distances between them do.
  static constexpr size_t kLimit = (size_t{1} << 31) - 1;

  std::vector<uint8_t> bytes_;
};

/// A place in the code that branches may name before it is known.
struct CodeLabel {
  bool placed = false;
  uint32_t offset = 0;
};

}  // namespace vorc
