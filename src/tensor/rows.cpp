#include "tensor/rows.h"

#include <cmath>

namespace vorc {

std::array<const double*, RowGroup::kSize> RowStarts(ConstMatrix m, const RowGroup& group) {
  std::array<const double*, RowGroup::kSize> starts{};
  for (size_t i = 0; i < starts.size(); ++i) starts[i] = m.data + group.Row(i) * m.stride;
  return starts;
}

RowMoments MomentsOf(ConstMatrix m, const RowGroup& group, double eps) {
  const auto x = RowStarts(m, group);
  const auto count = static_cast<double>(m.cols);
  RowMoments moments;
  moments.mean = SumColumns(m.cols, [&](size_t i, size_t col) { return x[i][col]; });
  for (double& mean : moments.mean) mean /= count;
  moments.inverse = SumColumns(m.cols, [&](size_t i, size_t col) {
    const double distance = x[i][col] - moments.mean[i];
    return distance * distance;
  });
  for (double& value : moments.inverse) value = 1.0 / std::sqrt(value / count + eps);
  return moments;
}

double LargestOf(std::span<const double> row) {
  // Side by side for speed. Starting all from the first value keeps a NaN in front what it is, the
  // answer, and passes over any other.
  constexpr size_t kLanes = 8;
  double lanes[kLanes];
  std::fill(std::begin(lanes), std::end(lanes), row[0]);
  size_t i = 0;
  for (; i + kLanes <= row.size(); i += kLanes) {
    for (size_t lane = 0; lane < kLanes; ++lane) {
      lanes[lane] = row[i + lane] > lanes[lane] ? row[i + lane] : lanes[lane];
    }
  }
  double largest = row[0];
  for (const double value : lanes) largest = value > largest ? value : largest;
  for (; i < row.size(); ++i) largest = row[i] > largest ? row[i] : largest;
  return largest;
}

void SoftmaxRows(Matrix m) {
  const TensorKernels& kernels = FastestTensorKernels();
  ForRowGroups(m.rows, [&](const RowGroup& group) {
    for (size_t i = 0; i < group.count; ++i) {
      double* row = m.data + group.Row(i) * m.stride;
      kernels.exponentials(row, m.cols, LargestOf({row, m.cols}));
    }
    const auto e = RowStarts(m, group);
    const GroupSums sums = SumColumns(m.cols, [&](size_t i, size_t col) { return e[i][col]; });
    for (size_t i = 0; i < group.count; ++i) {
      double* row = m.data + group.Row(i) * m.stride;
      const double sum = sums[i];
      for (size_t col = 0; col < m.cols; ++col) row[col] /= sum;
    }
  });
}

int32_t TokenNumber(double value, int32_t limit) {
  const double rounded = std::floor(value + 0.5);
  return rounded >= 0.0 && rounded < limit ? static_cast<int32_t>(rounded) : -1;
}

}  // namespace vorc
