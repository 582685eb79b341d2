#include "tensor/training.h"

#include <algorithm>
#include <array>
#include <vector>

#include "tensor/elementary.h"
#include "tensor/rows.h"
#include "tensor/trace.h"
#include "tensor/trace_steps.h"

namespace vorc {

namespace {

bool TargetsFit(const MorvTensorRec& logits, const MorvTensorRec& targets) {
  return targets.rows() == 1 && targets.cols() == logits.rows();
}

// -log of the softmax of a row at `target`. The row is a copy to work on.
double LossOfRow(std::span<double> row, size_t target) {
  const double largest = LargestOf(row);
  const double at_target = row[target] - largest;
  FastestTensorKernels().exponentials(row.data(), row.size(), largest);
  double sum = 0.0;
  for (const double e : row) sum += e;
  return LogFromOne(sum) - at_target;
}

}  // namespace

double MorvTensorCrossEntropyLoss(const MorvTensorRec& logits, const MorvTensorRec& targets) {
  constexpr double kFailed = -1.0;
  if (!TargetsFit(logits, targets)) return kFailed;
  const TensorPtr scratch = MorvTensorNew(1, logits.cols());
  if (!scratch) return kFailed;
  CrossEntropyTrace trace;
  double total = 0.0;
  for (size_t position = 0; position < logits.RowCount(); ++position) {
    const int32_t target = TokenNumber(targets.Row(0)[position], logits.cols());
    if (target < 0) return kFailed;
    std::ranges::copy(logits.Row(position), scratch->values().begin());
    const double loss = LossOfRow(scratch->values(), static_cast<size_t>(target));
    total += loss;
    if (MorvLlmTraceEnabled()) trace.Position(position, target, loss);
  }
  const double mean = total / logits.rows();
  if (MorvLlmTraceEnabled()) trace.Print(logits, mean);
  return mean;
}

TensorPtr MorvTensorCrossEntropyLossBackward(const MorvTensorRec& logits, const MorvTensorRec& targets) {
  if (!TargetsFit(logits, targets)) return nullptr;
  TensorPtr gradient = MorvTensorNew(logits.rows(), logits.cols());
  if (!gradient) return nullptr;
  std::ranges::copy(logits.values(), gradient->values().begin());
  SoftmaxRows(MatrixOf(*gradient));
  for (size_t position = 0; position < logits.RowCount(); ++position) {
    const int32_t target = TokenNumber(targets.Row(0)[position], logits.cols());
    if (target < 0) return nullptr;
    gradient->Row(position)[static_cast<size_t>(target)] -= 1.0;
  }
  for (double& value : gradient->values()) value /= logits.rows();
  if (MorvLlmTraceEnabled()) TraceCrossEntropyBackward(*gradient);
  return gradient;
}

TensorPtr MorvTensorReluBackward(const MorvTensorRec& x, const MorvTensorRec& dy) {
  if (!x.SameShape(dy)) return nullptr;
  TensorPtr dx = MorvTensorNew(x.rows(), x.cols());
  if (!dx) return nullptr;
  std::ranges::transform(x.values(), dy.values(), dx->values().data(),
                         [](double value, double slope) { return value > 0.0 ? slope : 0.0; });
  return dx;
}

TensorPtr MorvTensorSoftmaxBackward(const MorvTensorRec& y, const MorvTensorRec& dy) {
  if (!y.SameShape(dy)) return nullptr;
  TensorPtr dx = MorvTensorNew(y.rows(), y.cols());
  if (!dx) return nullptr;
  ForRowGroups(y.RowCount(), [&](const RowGroup& group) {
    const auto outputs = RowStarts(MatrixOf(y), group);
    const auto slopes = RowStarts(MatrixOf(dy), group);
    const GroupSums sums =
        SumColumns(y.ColumnCount(), [&](size_t i, size_t col) { return slopes[i][col] * outputs[i][col]; });
    for (size_t i = 0; i < group.count; ++i) {
      const auto row = dx->Row(group.Row(i));
      for (size_t col = 0; col < row.size(); ++col) row[col] = (slopes[i][col] - sums[i]) * outputs[i][col];
    }
  });
  return dx;
}

TensorPtr MorvTensorLayernormBackwardX(const MorvTensorRec& x, const MorvTensorRec& gamma,
                                       const MorvTensorRec& dy, double eps) {
  if (!x.SameShape(dy) || gamma.cols() != x.cols()) return nullptr;
  TensorPtr dx = MorvTensorNew(x.rows(), x.cols());
  if (!dx) return nullptr;
  const auto count = static_cast<double>(x.cols());
  const double* factors = gamma.values().data();
  ForRowGroups(x.RowCount(), [&](const RowGroup& group) {
    const auto inputs = RowStarts(MatrixOf(x), group);
    const auto slopes = RowStarts(MatrixOf(dy), group);
    const RowMoments moments = MomentsOf(MatrixOf(x), group, eps);
    const auto g = [&](size_t i, size_t col) { return slopes[i][col] * factors[col]; };
    const auto xhat = [&](size_t i, size_t col) {
      return (inputs[i][col] - moments.mean[i]) * moments.inverse[i];
    };
    const GroupSums g_sums = SumColumns(x.ColumnCount(), g);
    const GroupSums product_sums =
        SumColumns(x.ColumnCount(), [&](size_t i, size_t col) { return g(i, col) * xhat(i, col); });
    for (size_t i = 0; i < group.count; ++i) {
      const auto row = dx->Row(group.Row(i));
      for (size_t col = 0; col < row.size(); ++col) {
        row[col] =
            (g(i, col) * count - g_sums[i] - xhat(i, col) * product_sums[i]) * moments.inverse[i] / count;
      }
    }
  });
  return dx;
}

TensorPtr MorvTensorLayernormBackwardGamma(const MorvTensorRec& x, const MorvTensorRec& dy, double eps) {
  if (!x.SameShape(dy)) return nullptr;
  TensorPtr result = MorvTensorNew(1, x.cols());
  if (!result) return nullptr;
  const auto sums = result->Row(0);
  ForRowGroups(x.RowCount(), [&](const RowGroup& group) {
    const RowMoments moments = MomentsOf(MatrixOf(x), group, eps);
    for (size_t i = 0; i < group.count; ++i) {
      const auto inputs = x.Row(group.Row(i));
      const auto slopes = dy.Row(group.Row(i));
      for (size_t col = 0; col < sums.size(); ++col) {
        sums[col] += slopes[col] * ((inputs[col] - moments.mean[i]) * moments.inverse[i]);
      }
    }
  });
  return result;
}

TensorPtr MorvTensorLayernormBackwardBeta(const MorvTensorRec& dy) {
  TensorPtr result = MorvTensorNew(1, dy.cols());
  if (!result) return nullptr;
  const auto sums = result->Row(0);
  for (size_t row = 0; row < dy.RowCount(); ++row) {
    std::ranges::transform(sums, dy.Row(row), sums.data(),
                           [](double sum, double value) { return sum + value; });
  }
  return result;
}

TensorPtr MorvTensorEmbeddingLookupBackward(const MorvTensorRec& table, const MorvTensorRec& ids,
                                            const MorvTensorRec& dy) {
  if (ids.rows() != 1 || ids.cols() != dy.rows() || table.cols() != dy.cols()) return nullptr;
  TensorPtr gradient = MorvTensorNew(table.rows(), table.cols());
  if (!gradient) return nullptr;
  for (size_t position = 0; position < dy.RowCount(); ++position) {
    const int32_t id = TokenNumber(ids.Row(0)[position], table.rows());
    if (id < 0) return nullptr;
    const auto row = gradient->Row(static_cast<size_t>(id));
    std::ranges::transform(row, dy.Row(position), row.data(),
                           [](double sum, double value) { return sum + value; });
  }
  return gradient;
}

void MorvTensorSgdStep(MorvTensorRec& w, const MorvTensorRec& gradient, double rate) {
  if (!w.SameShape(gradient)) return;
  const auto weights = w.values();
  const auto slopes = gradient.values();
  SgdTrace trace(weights, slopes);
  for (size_t i = 0; i < weights.size(); ++i) weights[i] -= slopes[i] * rate;
  if (MorvLlmTraceEnabled()) trace.Print(w, rate);
}

}  // namespace vorc
