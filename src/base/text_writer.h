#pragma once

#include <charconv>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "base/descriptor.h"

namespace vorc {

/// A whole number with leading zeros up to `width` digits.
struct Padded {
  int64_t value;
  int width;
};

/// Upper-case hexadecimal digits, with leading zeros up to `width`.
struct Hex {
  uint64_t value;
  int width;
};

/// A text file that is written through one large buffer. A write that fails is remembered, and from
/// then on nothing more is written.
class TextWriter {
 public:
  TextWriter() = default;

  /// Makes the file anew. False if that can't be done.
  bool Open(const std::string& path);
  /// Writes to a file that is open already. False if it isn't.
  bool Open(Descriptor file);
  bool is_open() const { return static_cast<bool>(file_); }
  /// Writes what is left. False if anything could not be written since `Open`.
  bool Close();
  bool failed() const { return failed_; }

  /// Texts, characters, whole numbers, Padded and Hex, one behind the other.
  template <typename... Parts>
  void Write(const Parts&... parts) {
    (Put(parts), ...);
  }

 private:
  static constexpr size_t kCapacity = size_t{256} * 1024;
  static constexpr size_t kLongestNumber = 24;

  void Put(std::string_view text) {
    if (text.size() > kCapacity - used_) return PutLong(text);
    if (text.empty()) return;
    std::memcpy(buffer_.get() + used_, text.data(), text.size());
    used_ += text.size();
  }
  void Put(const char* text) { Put(std::string_view(text)); }
  void Put(const std::string& text) { Put(std::string_view(text)); }
  void Put(char c) { Put(std::string_view(&c, 1)); }
  void Put(Padded number);
  void Put(Hex number);
  template <typename Number>
  requires std::is_integral_v<Number>
  void Put(Number number) {
    char digits[kLongestNumber];
    const auto end = std::to_chars(digits, digits + kLongestNumber, number).ptr;
    Put(std::string_view(digits, static_cast<size_t>(end - digits)));
  }
  void PutLong(std::string_view text);
  void Flush();
  void WriteOut(std::string_view text);

  Descriptor file_;
  std::unique_ptr<char[]> buffer_;
  size_t used_ = kCapacity;  ///< nothing fits before the first text has got its buffer
  bool failed_ = false;
};

}  // namespace vorc
