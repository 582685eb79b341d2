#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace vorc {

/// A table of doubles, row by row. Never empty; zeros when new.
class MorvTensorRec {
 public:
  ~MorvTensorRec();
  MorvTensorRec(const MorvTensorRec&) = delete;
  MorvTensorRec& operator=(const MorvTensorRec&) = delete;

  int32_t rows() const { return rows_; }
  int32_t cols() const { return cols_; }
  size_t RowCount() const { return static_cast<size_t>(rows_); }
  size_t ColumnCount() const { return static_cast<size_t>(cols_); }
  bool SameShape(const MorvTensorRec& other) const { return rows_ == other.rows_ && cols_ == other.cols_; }

  std::span<double> values() { return {data_, RowCount() * ColumnCount()}; }
  std::span<const double> values() const { return {data_, RowCount() * ColumnCount()}; }
  std::span<double> Row(size_t row) { return values().subspan(row * ColumnCount(), ColumnCount()); }
  std::span<const double> Row(size_t row) const {
    return values().subspan(row * ColumnCount(), ColumnCount());
  }

  /// Bytes that the values of all tensors take at the moment.
  static size_t BytesInUse();

 private:
  friend std::unique_ptr<MorvTensorRec> MorvTensorNew(int32_t rows, int32_t cols);
  MorvTensorRec(int32_t rows, int32_t cols, double* data) : rows_(rows), cols_(cols), data_(data) {}

  int32_t rows_;
  int32_t cols_;
  double* data_;
};

/// What every operation answers: a new tensor, or null if its arguments don't fit each other or
/// there is no memory.
using TensorPtr = std::unique_ptr<MorvTensorRec>;

/// A tensor of zeros. Null unless both sizes are at least 1 and all tensors together fit into the
/// machine's memory.
TensorPtr MorvTensorNew(int32_t rows, int32_t cols);

/// The value at a place, or 0.0 outside.
double MorvTensorGet(const MorvTensorRec& t, int32_t row, int32_t col);

/// Sets one value. False outside.
bool MorvTensorSet(MorvTensorRec& t, int32_t row, int32_t col, double value);

/// Fills a tensor with small weights from -0.16 to 0.16 that depend on the place and the seed alone.
void MorvTensorInitSpread(MorvTensorRec& t, int32_t seed);

}  // namespace vorc
