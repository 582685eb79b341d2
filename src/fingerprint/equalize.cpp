#include "fingerprint/equalize.h"

#include <array>

namespace vorc {

namespace {

constexpr int kDepth = 256;
constexpr double kLowest = -1;
constexpr double kHighest = 1;
constexpr double kMinSlope = 0.001953125;
constexpr double kMaxSlope = 0.031171875;

using Mapping = std::array<double, kDepth>;

double Limited(double value, int level) {
  const int above = kDepth - 1 - level;
  const double lower = std::max(level * kMinSlope + kLowest, kHighest - above * kMaxSlope);
  const double upper = std::min(level * kMaxSlope + kLowest, kHighest - above * kMinSlope);
  return std::clamp(value, lower, upper);
}

Mapping Equalization(const int* bins) {
  int count = 0;
  for (int i = 0; i < kDepth; ++i) count += bins[i];
  const double weight = (kHighest - kLowest) / count;
  Mapping mapping;
  double top = kLowest;
  for (int i = 0; i < kDepth; ++i) {
    const double width = bins[i] * weight;
    const double share = static_cast<double>(i) / (kDepth - 1);
    mapping[static_cast<size_t>(i)] = Limited(top + share * width, i);
    top += width;
  }
  return mapping;
}

bool TouchesMask(const saf_boolean_matrix& mask, int column, int row) {
  for (int y = std::max(row - 1, 0); y <= std::min(row, mask.height() - 1); ++y) {
    for (int x = std::max(column - 1, 0); x <= std::min(column, mask.width() - 1); ++x) {
      if (mask.At(x, y)) return true;
    }
  }
  return false;
}

/// The mappings of the corners along one line of the grid; those without a masked block stay empty.
std::vector<Mapping> LineOfMappings(const saf_histogram_cube& corners, const saf_boolean_matrix& mask,
                                    int row) {
  std::vector<Mapping> mappings(static_cast<size_t>(corners.width()));
  for (int column = 0; column < corners.width(); ++column) {
    if (TouchesMask(mask, column, row))
      mappings[static_cast<size_t>(column)] = Equalization(corners.Bins(column, row));
  }
  return mappings;
}

double Between(double a, double b, double position) {
  return a + position * (b - a);
}

void EqualizeBlock(const saf_int_rect& area, const Mapping* top, const Mapping* bottom,
                   const saf_double_matrix& image, saf_double_matrix& result) {
  for (int y = area.y; y < area.bottom(); ++y) {
    const double down = (y - area.y + 0.5) / area.height;
    for (int x = area.x; x < area.right(); ++x) {
      const double across = (x - area.x + 0.5) / area.width;
      const int bin = saf_histogram_cube_constrain(static_cast<int>(image.At(x, y) * kDepth), kDepth);
      const size_t level = static_cast<size_t>(bin);
      result.At(x, y) = Between(Between(top[0][level], top[1][level], across),
                                Between(bottom[0][level], bottom[1][level], across), down);
    }
  }
}

}  // namespace

saf_double_matrix saf_image_equalize(const saf_block_map& blocks, const saf_double_matrix& image,
                                     const saf_histogram_cube& corner_histograms,
                                     const saf_boolean_matrix& block_mask) {
  saf_double_matrix result(image.width(), image.height(), kBackground);
  std::vector<Mapping> top = LineOfMappings(corner_histograms, block_mask, 0);
  for (int row = 0; row < block_mask.height(); ++row) {
    const std::vector<Mapping> bottom = LineOfMappings(corner_histograms, block_mask, row + 1);
    for (int column = 0; column < block_mask.width(); ++column) {
      if (!block_mask.At(column, row)) continue;
      const size_t left = static_cast<size_t>(column);
      EqualizeBlock(blocks.primary.Block(column, row), &top[left], &bottom[left], image, result);
    }
    top = bottom;
  }
  return result;
}

}  // namespace vorc
