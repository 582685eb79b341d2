#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "tensor/tensor.h"
#include "tensor/trace.h"

// What each traced step says. All of these print at once, or collect until their Print is called.

namespace vorc {

void TraceSoftmax(const MorvTensorRec& y);
void TraceMatmul(const MorvTensorRec& a, const MorvTensorRec& b, const MorvTensorRec& product);
void TraceAdd(const MorvTensorRec& sum);
void TraceRelu(const MorvTensorRec& x, const MorvTensorRec& y);
void TraceLinear(const MorvTensorRec& x, const MorvTensorRec& w, const MorvTensorRec& y);
void TraceLayernorm(const MorvTensorRec& y, double eps);
void TraceEmbeddingLookup(const MorvTensorRec& table, const MorvTensorRec& result);
void TraceCausalMask(const MorvTensorRec& masked);
void TracePositionalEncoding(const MorvTensorRec& encoding);
void TraceCrossEntropyBackward(const MorvTensorRec& gradient);
void TraceTokenize(std::string_view text);
void TraceDetokenize(const MorvTensorRec& ids, std::string_view text);

/// The first two heads in full, then the merged output.
class AttentionTrace {
 public:
  AttentionTrace(int32_t heads, bool causal) : heads_(heads), causal_(causal) {}

  /// The first rows of a head's scores before and after their softmax; `rows` is how many there are.
  void Scores(size_t head, ConstMatrix scores, size_t rows);
  void Weights(size_t head, ConstMatrix weights, size_t rows);
  void Print(const MorvTensorRec& output) const;

 private:
  void Rows(size_t head, const char* what, ConstMatrix shown, size_t rows, const char* cell);

  int32_t heads_;
  bool causal_;
  std::string lines_;
};

/// The first positions of a sequence, then the mean.
class CrossEntropyTrace {
 public:
  void Position(size_t position, int32_t target, double loss);
  void Print(const MorvTensorRec& logits, double mean) const;

 private:
  std::string lines_;
};

/// Remembers the first weights and slopes, which the step then overwrites.
class SgdTrace {
 public:
  SgdTrace(std::span<const double> weights, std::span<const double> slopes);
  void Print(const MorvTensorRec& w, double rate) const;

 private:
  static constexpr size_t kShown = 4;

  size_t count_;
  std::array<double, kShown> weights_{};
  std::array<double, kShown> slopes_{};
};

}  // namespace vorc
