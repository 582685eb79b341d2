#include "tensor/tokens.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "tensor/trace.h"
#include "tensor/trace_steps.h"

namespace vorc {

namespace {

constexpr int32_t kUsualDims = 64;
constexpr double kHighestByte = 255.0;

// A NaN, which is no token, ends the text like a zero.
char ByteOf(double value) {
  const double rounded = std::floor(value + 0.5);
  if (!(rounded > 0.0)) return '\0';
  return static_cast<char>(static_cast<unsigned char>(std::min(rounded, kHighestByte)));
}

}  // namespace

TensorPtr MorvTokenize(std::string_view text) {
  if (text.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max())) return nullptr;
  TensorPtr result = MorvTensorNew(1, static_cast<int32_t>(text.size()));
  if (!result) return nullptr;
  std::ranges::transform(text, result->values().data(), [](char c) { return static_cast<unsigned char>(c); });
  if (MorvLlmTraceEnabled()) TraceTokenize(text);
  return result;
}

std::string MorvDetokenize(const MorvTensorRec& t, size_t size) {
  std::string text;
  if (t.rows() != 1) return text;
  const size_t count = std::min(t.ColumnCount(), size - 1);
  for (const double value : t.values().first(count)) {
    const char c = ByteOf(value);
    if (c == '\0') break;
    text += c;
  }
  if (MorvLlmTraceEnabled()) TraceDetokenize(t, text);
  return text;
}

TensorPtr MorvTextEmbed(std::string_view text, int32_t dims) {
  if (dims < 1) dims = kUsualDims;
  TensorPtr result = MorvTensorNew(1, dims);
  if (!result) return nullptr;
  uint32_t previous = ' ';
  for (const char byte : text) {
    uint32_t c = static_cast<unsigned char>(byte);
    if (c >= 'A' && c <= 'Z') c += 'a' - 'A';
    if (c == ' ' || c == '\t' || c == '\n' || c == '\r') {
      if (previous == ' ') continue;
      c = ' ';
    }
    result->values()[(previous * 31 + c) % static_cast<uint32_t>(dims)] += 1.0;
    previous = c;
  }
  return result;
}

}  // namespace vorc
