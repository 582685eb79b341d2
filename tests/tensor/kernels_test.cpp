#include "tensor/kernels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "tensor/elementary.h"

namespace vorc {
namespace {

std::vector<double> Random(size_t count, std::mt19937& random, double from, double to) {
  std::uniform_real_distribution<double> uniform(from, to);
  std::vector<double> values(count);
  for (double& value : values) value = uniform(random);
  return values;
}

bool SameBits(const std::vector<double>& a, const std::vector<double>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

// One plain sum a cell, in index order: what every kernel must give to the last bit.
std::vector<double> Product(const std::vector<double>& a, const std::vector<double>& b, size_t rows,
                            size_t depth, size_t cols, size_t stride) {
  std::vector<double> c(rows * stride, 7.0);
  for (size_t i = 0; i < rows; ++i) {
    for (size_t j = 0; j < cols; ++j) {
      double sum = 0.0;
      for (size_t k = 0; k < depth; ++k) {
        const volatile double product = a[i * stride + k] * b[k * stride + j];  // volatile: not to be fused
        sum += product;
      }
      c[i * stride + j] = sum;
    }
  }
  return c;
}

TEST(TensorKernels, MultiplyInIndexOrder) {
  std::mt19937 random(2);
  const struct {
    size_t rows, depth, cols;
  } shapes[] = {{1, 1, 1},    {1, 300, 40},  {4, 5, 8},    {5, 1, 3},
                {9, 600, 17}, {13, 256, 16}, {3, 257, 31}, {70, 33, 65}};
  for (const auto& [rows, depth, cols] : shapes) {
    const size_t stride = std::max(depth, cols) + 3;
    const auto a = Random(rows * stride, random, -1, 1);
    const auto b = Random(depth * stride, random, -1, 1);
    const auto expected = Product(a, b, rows, depth, cols, stride);
    for (const TensorKernels& kernels : UsableTensorKernels()) {
      std::vector<double> c(rows * stride, 7.0);
      kernels.multiply({a.data(), rows, depth, stride}, {b.data(), depth, cols, stride},
                       {c.data(), rows, cols, stride});
      EXPECT_TRUE(SameBits(c, expected)) << kernels.name << ' ' << rows << 'x' << depth << 'x' << cols;
    }
  }
}

TEST(TensorKernels, ExponentialsAreThoseOfSingleNumbers) {
  std::mt19937 random(3);
  auto values = Random(1003, random, -760, 0);
  using Limits = std::numeric_limits<double>;
  const double limits[] = {
      0.0, -0.0, -708.0, -708.5, -745.0, -746.0, -1e9, -Limits::infinity(), Limits::quiet_NaN()};
  for (size_t i = 0; i < std::size(limits); ++i) values[i * 7] = limits[i];
  auto expected = values;
  for (double& value : expected) value = ExpOfNegative(value - 1.5);
  for (const TensorKernels& kernels : UsableTensorKernels()) {
    auto results = values;
    kernels.exponentials(results.data(), results.size(), 1.5);
    EXPECT_TRUE(SameBits(results, expected)) << kernels.name;
  }
}

}  // namespace
}  // namespace vorc
