#include "tensor/attention.h"

#include <algorithm>
#include <cmath>

#include "tensor/operations.h"
#include "tensor/rows.h"
#include "tensor/trace.h"
#include "tensor/trace_steps.h"

namespace vorc {

namespace {

// Rows of scores that are worked on at a time; the rest of a long sequence needs no memory.
constexpr size_t kScoreRows = 64;

ConstMatrix Slice(ConstMatrix m, size_t first_row, size_t rows, size_t first_col, size_t cols) {
  return {m.data + first_row * m.stride + first_col, rows, cols, m.stride};
}

void TransposeInto(ConstMatrix from, Matrix to) {
  for (size_t row = 0; row < from.rows; ++row) {
    for (size_t col = 0; col < from.cols; ++col)
      to.data[col * to.stride + row] = from.data[row * from.stride + col];
  }
}

/// What one call of attention works on.
struct Attention {
  const MorvTensorRec& q;
  const MorvTensorRec& k;
  const MorvTensorRec& v;
  size_t width;  ///< columns of a head
  bool causal;
  MorvTensorRec& output;
  MorvTensorRec& keys;    ///< one head's keys, transposed
  MorvTensorRec& scores;  ///< some rows of one head's scores
  AttentionTrace* trace;  ///< null when nobody looks
};

void ScaleAndMask(const Attention& a, size_t first_row, Matrix scores) {
  const double scale = 1.0 / std::sqrt(static_cast<double>(a.width));
  for (size_t i = 0; i < scores.rows; ++i) {
    double* row = scores.data + i * scores.stride;
    for (size_t j = 0; j < scores.cols; ++j) row[j] *= scale;
    if (a.causal && first_row + i + 1 < scores.cols) {
      std::fill(row + first_row + i + 1, row + scores.cols, kMaskedScore);
    }
  }
}

void AttendRows(const Attention& a, size_t head, size_t first_row, size_t rows) {
  const TensorKernels& kernels = FastestTensorKernels();
  const size_t col = head * a.width;
  Matrix scores = MatrixOf(a.scores);
  scores.rows = rows;
  kernels.multiply(Slice(MatrixOf(a.q), first_row, rows, col, a.width), MatrixOf(a.keys), scores);
  ScaleAndMask(a, first_row, scores);
  const bool shown = a.trace != nullptr && first_row == 0;
  if (shown) a.trace->Scores(head, scores, a.q.RowCount());
  SoftmaxRows(scores);
  if (shown) a.trace->Weights(head, scores, a.q.RowCount());
  double* output = a.output.Row(first_row).data() + col;
  kernels.multiply(scores, Slice(MatrixOf(a.v), 0, a.v.RowCount(), col, a.width),
                   {output, rows, a.width, a.output.ColumnCount()});
}

void AttendHead(const Attention& a, size_t head) {
  TransposeInto(Slice(MatrixOf(a.k), 0, a.k.RowCount(), head * a.width, a.width), MatrixOf(a.keys));
  for (size_t row = 0; row < a.q.RowCount(); row += kScoreRows) {
    AttendRows(a, head, row, std::min(kScoreRows, a.q.RowCount() - row));
  }
}

}  // namespace

TensorPtr MorvTensorMultiheadAttention(const MorvTensorRec& q, const MorvTensorRec& k, const MorvTensorRec& v,
                                       int32_t heads, bool causal) {
  if (q.cols() != k.cols() || !v.SameShape(k) || heads < 1 || q.cols() % heads != 0) return nullptr;
  const int32_t width = q.cols() / heads;
  const auto score_rows = static_cast<int32_t>(std::min(kScoreRows, q.RowCount()));
  TensorPtr output = MorvTensorNew(q.rows(), q.cols());
  const TensorPtr keys = MorvTensorNew(width, k.rows());
  const TensorPtr scores = MorvTensorNew(score_rows, k.rows());
  if (!output || !keys || !scores) return nullptr;
  AttentionTrace trace(heads, causal);
  const Attention attention = {q,
                               k,
                               v,
                               static_cast<size_t>(width),
                               causal,
                               *output,
                               *keys,
                               *scores,
                               MorvLlmTraceEnabled() ? &trace : nullptr};
  for (int32_t head = 0; head < heads; ++head) AttendHead(attention, static_cast<size_t>(head));
  if (attention.trace != nullptr) trace.Print(*output);
  return output;
}

TensorPtr MorvTensorCrossAttention(const MorvTensorRec& xq, const MorvTensorRec& xkv,
                                   const AttentionWeights& weights, int32_t heads, bool causal) {
  const TensorPtr q = MorvTensorLinear(xq, weights.wq, weights.bq);
  const TensorPtr k = q ? MorvTensorLinear(xkv, weights.wk, weights.bk) : nullptr;
  const TensorPtr v = k ? MorvTensorLinear(xkv, weights.wv, weights.bv) : nullptr;
  const TensorPtr mixed = v ? MorvTensorMultiheadAttention(*q, *k, *v, heads, causal) : nullptr;
  return mixed ? MorvTensorLinear(*mixed, weights.wo, weights.bo) : nullptr;
}

}  // namespace vorc
