#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace vorc {

/// Doubles row by row, with `stride` of them from one row to the next. Borrowed.
struct ConstMatrix {
  const double* data;
  size_t rows;
  size_t cols;
  size_t stride;
};
struct Matrix {
  double* data;
  size_t rows;
  size_t cols;
  size_t stride;

  operator ConstMatrix() const { return {data, rows, cols, stride}; }
};

/// The two loops that a processor's wider registers pay for. Every set gives the same bits: a
/// vector holds several cells, never parts of one cell's sum, and nothing is fused.
struct TensorKernels {
  std::string_view name;
  /// c = a b. Each cell is summed from zero in the order of b's rows.
  void (*multiply)(ConstMatrix a, ConstMatrix b, Matrix c);
  /// Each value becomes exp(value - highest); no value may be above `highest`.
  void (*exponentials)(double* values, size_t count, double highest);
};

/// The sets that this processor can run, the plainest first.
std::span<const TensorKernels> UsableTensorKernels();

/// The fastest of them.
const TensorKernels& FastestTensorKernels();

}  // namespace vorc
