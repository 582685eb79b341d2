#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vorc {

/// What a run prints, as much of it as its caller has room for.
class Answer {
 public:
  explicit Answer(int64_t size) : limit_(size > 0 ? static_cast<size_t>(size) - 1 : 0) {}

  void Append(std::string_view text);
  bool Empty() const { return text_.empty(); }
  /// Puts the reason of a failure on a line of its own at the end; it takes the room of what was printed.
  void Fail(std::string_view reason);
  std::string_view text() const { return text_; }

 private:
  size_t limit_;
  std::string text_;
};

/// Copies a text into `size` bytes with a NUL behind it. Nothing is cut within a character of UTF-8.
void CopyOut(std::string_view text, char* out, int64_t size);

/// The name in front of ":json", or nothing if the name doesn't end so.
std::optional<std::string_view> NameOfJson(std::string_view name);

/// The number that a whole text stands for, blanks around it allowed.
std::optional<double> NumberIn(const std::string& text);

/// "time limit of 50 ms reached"
std::string LimitReached(int32_t milliseconds);

}  // namespace vorc
