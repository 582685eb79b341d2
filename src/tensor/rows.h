#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "tensor/kernels.h"
#include "tensor/tensor.h"

namespace vorc {

/// Rows that are summed side by side. A sum in index order waits for each addition to end before
/// the next one starts; four of them at a time keep the adder busy.
struct RowGroup {
  static constexpr size_t kSize = 4;

  size_t first;
  size_t count;

  /// Short groups repeat their last row.
  size_t Row(size_t i) const { return first + std::min(i, count - 1); }
};

using GroupSums = std::array<double, RowGroup::kSize>;

/// Calls work(group) for all rows in turn.
template <typename Work>
void ForRowGroups(size_t rows, Work work) {
  for (size_t first = 0; first < rows; first += RowGroup::kSize) {
    work(RowGroup{first, std::min(RowGroup::kSize, rows - first)});
  }
}

/// For each row of a group the sum of term(i, column) over all columns, from zero and in order;
/// `i` counts the group's rows.
template <typename Term>
GroupSums SumColumns(size_t cols, Term term) {
  double a = 0.0;
  double b = 0.0;
  double c = 0.0;
  double d = 0.0;
  for (size_t col = 0; col < cols; ++col) {
    a += term(size_t{0}, col);
    b += term(size_t{1}, col);
    c += term(size_t{2}, col);
    d += term(size_t{3}, col);
  }
  return {a, b, c, d};
}

/// The starts of a group's rows.
std::array<const double*, RowGroup::kSize> RowStarts(ConstMatrix m, const RowGroup& group);

/// Mean and reciprocal standard deviation of a group's rows: 1 / sqrt(variance + eps), with the
/// biased variance.
struct RowMoments {
  GroupSums mean;
  GroupSums inverse;
};
RowMoments MomentsOf(ConstMatrix m, const RowGroup& group, double eps);

/// The largest value: the first one where none compares as larger.
double LargestOf(std::span<const double> row);

/// Turns each row into its softmax.
void SoftmaxRows(Matrix m);

inline ConstMatrix MatrixOf(const MorvTensorRec& t) {
  return {t.values().data(), t.RowCount(), t.ColumnCount(), t.ColumnCount()};
}
inline Matrix MatrixOf(MorvTensorRec& t) {
  return {t.values().data(), t.RowCount(), t.ColumnCount(), t.ColumnCount()};
}

/// The number of a token: the nearest integer, halves upwards. -1 unless it is below `limit`.
int32_t TokenNumber(double value, int32_t limit);

}  // namespace vorc
