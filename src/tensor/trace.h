#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "tensor/kernels.h"

namespace vorc {

/// True if the environment has VORC_LLMTRACE, with any value. Read once.
bool MorvLlmTraceEnabled();

/// How much of a matrix or list the trace shows.
inline constexpr size_t kTracedCells = 8;

/// What one step tells about itself on standard output: a rule, a title, why the step exists, and
/// figures, in this order. Every line begins with the trace's mark.
class LlmTraceBlock {
 public:
  enum class Rule : char { kPlain = '-', kMajor = '=' };

  /// `reasons` are lines in plain words.
  LlmTraceBlock(Rule rule, const std::string& title, std::span<const std::string_view> reasons);

  void Line(std::string_view text);
  /// A matrix as it is, cut to its top-left corner.
  void MorvLlmTraceMatrix(std::string_view label, ConstMatrix matrix);
  void Append(std::string_view lines) { text_ += lines; }
  void Print() const;

 private:
  std::string text_;
};

/// One line of the trace.
std::string TraceLine(std::string_view text);

/// The rows of a matrix, each in brackets, at most 8 of its `rows` and 8 columns; `cell` is the
/// format of one value.
std::string TraceRows(ConstMatrix matrix, const char* cell);

/// A text with its line ends and form feeds as blanks, so that it stays on its line.
std::string OnOneLine(std::string_view text);

}  // namespace vorc
