#include "tensor/operations.h"

#include <algorithm>
#include <cmath>

#include "tensor/elementary.h"
#include "tensor/rows.h"
#include "tensor/trace.h"
#include "tensor/trace_steps.h"

namespace vorc {

namespace {

template <typename Function>
TensorPtr Combine(const MorvTensorRec& a, const MorvTensorRec& b, Function function) {
  if (!a.SameShape(b)) return nullptr;
  TensorPtr result = MorvTensorNew(a.rows(), a.cols());
  if (result) std::ranges::transform(a.values(), b.values(), result->values().data(), function);
  return result;
}

template <typename Function>
TensorPtr Map(const MorvTensorRec& t, Function function) {
  TensorPtr result = MorvTensorNew(t.rows(), t.cols());
  if (result) std::ranges::transform(t.values(), result->values().data(), function);
  return result;
}

TensorPtr Copy(const MorvTensorRec& t) {
  return Map(t, [](double value) { return value; });
}

TensorPtr Multiply(const MorvTensorRec& a, const MorvTensorRec& b) {
  if (a.cols() != b.rows()) return nullptr;
  TensorPtr product = MorvTensorNew(a.rows(), b.cols());
  if (product) FastestTensorKernels().multiply(MatrixOf(a), MatrixOf(b), MatrixOf(*product));
  return product;
}

}  // namespace

TensorPtr MorvTensorMatmul(const MorvTensorRec& a, const MorvTensorRec& b) {
  TensorPtr product = Multiply(a, b);
  if (product && MorvLlmTraceEnabled()) TraceMatmul(a, b, *product);
  return product;
}

TensorPtr MorvTensorAdd(const MorvTensorRec& a, const MorvTensorRec& b) {
  TensorPtr sum = Combine(a, b, [](double x, double y) { return x + y; });
  if (sum && MorvLlmTraceEnabled()) TraceAdd(*sum);
  return sum;
}

TensorPtr MorvTensorSub(const MorvTensorRec& a, const MorvTensorRec& b) {
  return Combine(a, b, [](double x, double y) { return x - y; });
}

TensorPtr MorvTensorScale(const MorvTensorRec& t, double factor) {
  return Map(t, [factor](double x) { return x * factor; });
}

TensorPtr MorvTensorTranspose(const MorvTensorRec& t) {
  TensorPtr result = MorvTensorNew(t.cols(), t.rows());
  if (!result) return nullptr;
  constexpr size_t kBlock = 16;  // so that reading and writing both use up the lines they fetch
  for (size_t row = 0; row < t.RowCount(); row += kBlock) {
    for (size_t col = 0; col < t.ColumnCount(); ++col) {
      const size_t end = std::min(row + kBlock, t.RowCount());
      for (size_t r = row; r < end; ++r) result->Row(col)[r] = t.Row(r)[col];
    }
  }
  return result;
}

TensorPtr MorvTensorRelu(const MorvTensorRec& t) {
  TensorPtr result = Map(t, [](double x) { return x < 0.0 ? 0.0 : x; });
  if (result && MorvLlmTraceEnabled()) TraceRelu(t, *result);
  return result;
}

TensorPtr MorvTensorSoftmax(const MorvTensorRec& t) {
  TensorPtr result = Copy(t);
  if (!result) return nullptr;
  SoftmaxRows(MatrixOf(*result));
  if (MorvLlmTraceEnabled()) TraceSoftmax(*result);
  return result;
}

TensorPtr MorvTensorLinear(const MorvTensorRec& x, const MorvTensorRec& w, const MorvTensorRec& b) {
  if (b.cols() != w.cols()) return nullptr;
  TensorPtr y = Multiply(x, w);
  if (!y) return nullptr;
  const auto bias = b.Row(0);
  for (size_t row = 0; row < y->RowCount(); ++row) {
    const auto cells = y->Row(row);
    for (size_t col = 0; col < cells.size(); ++col) cells[col] += bias[col];
  }
  if (MorvLlmTraceEnabled()) TraceLinear(x, w, *y);
  return y;
}

TensorPtr MorvTensorLayernorm(const MorvTensorRec& x, const MorvTensorRec& gamma, const MorvTensorRec& beta,
                              double eps) {
  if (gamma.cols() != x.cols() || beta.cols() != x.cols()) return nullptr;
  TensorPtr y = MorvTensorNew(x.rows(), x.cols());
  if (!y) return nullptr;
  const double* factors = gamma.values().data();
  const double* offsets = beta.values().data();
  ForRowGroups(x.RowCount(), [&](const RowGroup& group) {
    const RowMoments moments = MomentsOf(MatrixOf(x), group, eps);
    for (size_t i = 0; i < group.count; ++i) {
      const auto from = x.Row(group.Row(i));
      double* to = y->Row(group.Row(i)).data();
      const double mean = moments.mean[i];
      const double inverse = moments.inverse[i];
      for (size_t col = 0; col < from.size(); ++col) {
        to[col] = (from[col] - mean) * inverse * factors[col] + offsets[col];
      }
    }
  });
  if (MorvLlmTraceEnabled()) TraceLayernorm(*y, eps);
  return y;
}

TensorPtr MorvTensorEmbeddingLookup(const MorvTensorRec& table, const MorvTensorRec& ids) {
  if (ids.rows() != 1) return nullptr;
  TensorPtr result = MorvTensorNew(ids.cols(), table.cols());
  if (!result) return nullptr;
  for (size_t position = 0; position < ids.ColumnCount(); ++position) {
    const int32_t id = TokenNumber(ids.Row(0)[position], table.rows());
    if (id < 0) return nullptr;
    std::ranges::copy(table.Row(static_cast<size_t>(id)), result->Row(position).begin());
  }
  if (MorvLlmTraceEnabled()) TraceEmbeddingLookup(table, *result);
  return result;
}

TensorPtr MorvTensorCausalMask(const MorvTensorRec& scores) {
  if (scores.rows() != scores.cols()) return nullptr;
  TensorPtr result = Copy(scores);
  if (!result) return nullptr;
  for (size_t row = 0; row < result->RowCount(); ++row) {
    std::ranges::fill(result->Row(row).subspan(row + 1), kMaskedScore);
  }
  if (MorvLlmTraceEnabled()) TraceCausalMask(*result);
  return result;
}

TensorPtr MorvTensorPositionalEncoding(int32_t length, int32_t width) {
  TensorPtr result = MorvTensorNew(length, width);
  if (!result) return nullptr;
  for (size_t col = 0; col < result->ColumnCount(); col += 2) {
    const double wavelength = PowerOfTenThousand(static_cast<double>(col) / width);
    for (size_t position = 0; position < result->RowCount(); ++position) {
      const SineCosine wave = SineCosineOf(static_cast<double>(position) / wavelength);
      const auto row = result->Row(position);
      row[col] = wave.sine;
      if (col + 1 < row.size()) row[col + 1] = wave.cosine;
    }
  }
  if (MorvLlmTraceEnabled()) TracePositionalEncoding(*result);
  return result;
}

int32_t MorvTensorArgmax(const MorvTensorRec& t, int32_t row) {
  if (row < 0 || row >= t.rows()) return -1;
  const auto cells = t.Row(static_cast<size_t>(row));
  size_t best = 0;
  for (size_t col = 1; col < cells.size(); ++col) {
    if (cells[col] > cells[best]) best = col;
  }
  return static_cast<int32_t>(best);
}

double MorvTensorCosine(const MorvTensorRec& a, const MorvTensorRec& b) {
  if (!a.SameShape(b)) return 0.0;
  const auto x = a.values();
  const auto y = b.values();
  double dot = 0.0;
  double x_square = 0.0;
  double y_square = 0.0;
  for (size_t i = 0; i < x.size(); ++i) {
    dot += x[i] * y[i];
    x_square += x[i] * x[i];
    y_square += y[i] * y[i];
  }
  if (!(x_square > 0.0) || !(y_square > 0.0)) return 0.0;
  return dot / (std::sqrt(x_square) * std::sqrt(y_square));
}

}  // namespace vorc
