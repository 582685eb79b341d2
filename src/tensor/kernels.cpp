#include "tensor/kernels.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include "base/processor.h"
#include "tensor/elementary.h"

// Everything below a kernel must be inlined into it, to be compiled for the kernel's processor.
#define VORC_INLINE [[gnu::always_inline]] inline

namespace vorc {

namespace {

template <size_t width>
VORC_INLINE void Load(const double* from, typename Lanes<width>::Type& to) {
  std::memcpy(&to, from, sizeof to);
}

template <size_t width>
VORC_INLINE void Store(const typename Lanes<width>::Type& from, double* to) {
  std::memcpy(to, &from, sizeof from);
}

constexpr size_t kTileRows = 4;     // cells of c that are summed at a time: four rows
constexpr size_t kTileVectors = 2;  // of two registers each
constexpr size_t kDepth = 256;  // rows of b that are worked off before the next ones: a panel fits a cache
constexpr size_t kRowsWorthPacking = 2 * kTileRows;

/// A stretch of b, `width` x kTileVectors columns wide.
struct Panel {
  const double* data;
  size_t rows;
  size_t stride;
};

// Adds the products of `rows` rows of a with a panel of b to as many rows of c.
template <size_t width, size_t rows>
VORC_INLINE void AddTile(const double* a, size_t a_stride, Panel b, double* c, size_t c_stride) {
  using V = typename Lanes<width>::Type;
  V left[rows];
  V right[rows];
  for (size_t i = 0; i < rows; ++i) {
    Load<width>(c + i * c_stride, left[i]);
    Load<width>(c + i * c_stride + width, right[i]);
  }
  for (size_t k = 0; k < b.rows; ++k) {
    V b_left;
    V b_right;
    Load<width>(b.data + k * b.stride, b_left);
    Load<width>(b.data + k * b.stride + width, b_right);
    for (size_t i = 0; i < rows; ++i) {
      const double factor = a[i * a_stride + k];
      left[i] += factor * b_left;
      right[i] += factor * b_right;
    }
  }
  for (size_t i = 0; i < rows; ++i) {
    Store<width>(left[i], c + i * c_stride);
    Store<width>(right[i], c + i * c_stride + width);
  }
}

template <size_t width>
VORC_INLINE void AddPanel(ConstMatrix a, size_t first, Panel b, double* c, size_t c_stride) {
  size_t i = 0;
  for (; i + kTileRows <= a.rows; i += kTileRows) {
    AddTile<width, kTileRows>(a.data + i * a.stride + first, a.stride, b, c + i * c_stride, c_stride);
  }
  for (; i < a.rows; ++i) {
    AddTile<width, 1>(a.data + i * a.stride + first, a.stride, b, c + i * c_stride, c_stride);
  }
}

// The last columns, fewer than a panel's: worked on in copies that are filled up with zeros.
template <size_t width>
VORC_INLINE void AddNarrowPanel(ConstMatrix a, size_t first, Panel b, size_t cols, double* c,
                                size_t c_stride) {
  constexpr size_t kColumns = width * kTileVectors;
  for (size_t i = 0; i < a.rows; i += kTileRows) {
    const size_t rows = std::min(kTileRows, a.rows - i);
    double tile[kTileRows * kColumns] = {};
    for (size_t r = 0; r < rows; ++r) std::copy_n(c + (i + r) * c_stride, cols, tile + r * kColumns);
    const ConstMatrix some = {a.data + i * a.stride, rows, a.cols, a.stride};
    AddPanel<width>(some, first, b, tile, kColumns);
    for (size_t r = 0; r < rows; ++r) std::copy_n(tile + r * kColumns, cols, c + (i + r) * c_stride);
  }
}

template <size_t width>
VORC_INLINE void MultiplyWith(ConstMatrix a, ConstMatrix b, Matrix c) {
  constexpr size_t kColumns = width * kTileVectors;
  double packed[kDepth * kColumns];
  for (size_t i = 0; i < c.rows; ++i) std::fill_n(c.data + i * c.stride, c.cols, 0.0);
  for (size_t first = 0; first < b.rows; first += kDepth) {
    const size_t rows = std::min(kDepth, b.rows - first);
    for (size_t col = 0; col < b.cols; col += kColumns) {
      const size_t cols = std::min(kColumns, b.cols - col);
      Panel panel = {b.data + first * b.stride + col, rows, b.stride};
      if (cols < kColumns || a.rows >= kRowsWorthPacking) {
        for (size_t k = 0; k < rows; ++k) {
          double* to = packed + k * kColumns;
          std::fill(std::copy_n(panel.data + k * panel.stride, cols, to), to + kColumns, 0.0);
        }
        panel = {packed, rows, kColumns};
      }
      if (cols == kColumns) {
        AddPanel<width>(a, first, panel, c.data + col, c.stride);
      } else {
        AddNarrowPanel<width>(a, first, panel, cols, c.data + col, c.stride);
      }
    }
  }
}

template <size_t width>
VORC_INLINE void ExponentialsWith(double* values, size_t count, double highest) {
  using V = typename Lanes<width>::Type;
  size_t i = 0;
  for (; i + width <= count; i += width) {
    V x;
    Load<width>(values + i, x);
    x -= highest;
    // A NaN is in no range either, so all lanes that leave the fast way fail this.
    const auto fast = x >= kLowestNormalExponent;
    int64_t all_fast = -1;
    for (size_t lane = 0; lane < width; ++lane) all_fast &= fast[lane];
    if (all_fast != 0) {
      const V no_tail = {};
      V result;
      ExpInRange<width>(x, no_tail, result);
      Store<width>(result, values + i);
    } else {
      for (size_t lane = 0; lane < width; ++lane) values[i + lane] = ExpOfNegative(x[lane]);
    }
  }
  for (; i < count; ++i) values[i] = ExpOfNegative(values[i] - highest);
}

void MultiplyPlain(ConstMatrix a, ConstMatrix b, Matrix c) {
  MultiplyWith<2>(a, b, c);
}
void ExponentialsPlain(double* values, size_t count, double highest) {
  ExponentialsWith<2>(values, count, highest);
}

#if defined(__x86_64__)

#define VORC_AVX2 __attribute__((target("avx2")))

VORC_AVX2 void MultiplyAvx2(ConstMatrix a, ConstMatrix b, Matrix c) {
  MultiplyWith<4>(a, b, c);
}
VORC_AVX2 void ExponentialsAvx2(double* values, size_t count, double highest) {
  ExponentialsWith<4>(values, count, highest);
}
#endif

std::vector<TensorKernels> FindUsable() {
  std::vector<TensorKernels> usable = {{"plain", MultiplyPlain, ExponentialsPlain}};
#if defined(__x86_64__)
  if (ProcessorHasAvx2()) usable.push_back({"avx2", MultiplyAvx2, ExponentialsAvx2});
#endif
  return usable;
}

}  // namespace

std::span<const TensorKernels> UsableTensorKernels() {
  static const std::vector<TensorKernels> usable = FindUsable();
  return usable;
}

const TensorKernels& FastestTensorKernels() {
  static const TensorKernels& fastest = UsableTensorKernels().back();
  return fastest;
}

}  // namespace vorc
