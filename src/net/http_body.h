#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace vorc {

/// Bytes as they come in. They are neither cleared nor copied as they grow.
class ReceivedBytes {
 public:
  /// Room behind what has come, so that no more than `limit` bytes come in all. None when that is
  /// reached, or for want of memory.
  std::span<char> Room(size_t limit);
  /// Tells how much of the room holds bytes now.
  void Fill(size_t count) { size_ += count; }

  /// What came; a NUL byte follows it.
  std::span<char> Terminated();

 private:
  struct Free {
    void operator()(char* memory) const { std::free(memory); }
  };

  std::unique_ptr<char, Free> memory_;
  size_t size_ = 0;
  size_t capacity_ = 0;
};

/// Turns a chunked body (RFC 9112) into its content, in place, up to the first chunk that is broken or
/// cut, and answers how long that is. A NUL byte must follow the body.
size_t DecodeChunks(std::span<char> body);

/// What an answer carries, up to its first NUL byte.
class HttpBody {
 public:
  /// Takes an answer to a request (RFC 9112) apart. Nothing if its head has no end; `status` is 0 then,
  /// and where there is no status line.
  static std::optional<HttpBody> Of(ReceivedBytes answer, int32_t& status);

  HttpBody() = default;
  std::string_view text() const { return text_; }

 private:
  ReceivedBytes bytes_;
  std::string_view text_;
};

}  // namespace vorc
