#include "fingerprint/orientations.h"

#include <algorithm>
#include <cstdlib>

#include "fingerprint/angles.h"

namespace vorc {

namespace {

constexpr double kMinDistance = 2.0;
constexpr double kMaxDistance = 6.0;

/// An offset in the half plane of positive y that `set` doesn't have yet. A pair of pixels to both
/// sides needs no more than half the circle.
saf_orientation_sample MakeSample(saf_random& random, const saf_orientation_sample* set, int count) {
  for (;;) {
    const double angle = random.Next() * kPi;
    const double distance = saf_interpolate_exponential(kMinDistance, kMaxDistance, random.Next());
    const saf_double_point direction = saf_angle_to_vector(angle);
    const saf_int_point offset{saf_round(direction.x * distance), saf_round(direction.y * distance)};
    const bool known =
        std::any_of(set, set + count, [&](const auto& sample) { return sample.offset == offset; });
    if (known || offset == saf_int_point{}) continue;
    const double across = saf_angle_to_orientation(saf_angle_of(offset.x, offset.y));
    return {offset, saf_angle_to_vector(saf_angle_opposite(across))};
  }
}

saf_orientation_sets MakeSets() {
  saf_orientation_sets sets;
  saf_random random;
  for (auto& set : sets) {
    for (int i = 0; i < kOrientationSamples; ++i) {
      set[static_cast<size_t>(i)] = MakeSample(random, set.data(), i);
    }
  }
  return sets;
}

/// The pixels of a row of blocks from its first masked block to its last.
saf_int_range MaskedRange(const saf_boolean_matrix& mask, const saf_block_grid& grid, int row) {
  saf_int_range range;
  for (int column = 0; column < mask.width(); ++column) {
    if (!mask.At(column, row)) continue;
    const saf_int_rect block = grid.Block(column, row);
    if (range.end == 0) range.start = block.x;
    range.end = block.right();
  }
  return range;
}

/// One row of pixels, whose vectors' coordinates are summed apart from each other.
struct RowSums {
  std::vector<double> x;
  std::vector<double> y;
};

void AddSample(const saf_double_matrix& image, int y, saf_int_range range,
               const saf_orientation_sample& sample, RowSums& sums) {
  const saf_int_point offset = sample.offset;
  if (y - offset.y < 0 || y + offset.y >= image.height()) return;
  const int start = std::max(range.start, std::abs(offset.x));
  const int end = std::min(range.end, image.width() - std::abs(offset.x));
  const double* before = image.Row(y - offset.y) - offset.x;
  const double* at = image.Row(y);
  const double* after = image.Row(y + offset.y) + offset.x;
  double* sum_x = sums.x.data();
  double* sum_y = sums.y.data();
  const saf_double_point vector = sample.vector;
  for (int x = start; x < end; ++x) {
    const double highest = before[x] > after[x] ? before[x] : after[x];
    const double rise = at[x] - highest;
    const double strength = rise > 0 ? rise : 0;
    sum_x[x] += strength * vector.x;
    sum_y[x] += strength * vector.y;
  }
}

void Store(RowSums& sums, saf_int_range range, saf_double_point* row) {
  for (int x = range.start; x < range.end; ++x) {
    const size_t i = static_cast<size_t>(x);
    row[i] = {sums.x[i], sums.y[i]};
    sums.x[i] = sums.y[i] = 0;
  }
}

saf_double_point_matrix SumBlocks(const saf_double_point_matrix& pixels, const saf_boolean_matrix& mask,
                                  const saf_block_grid& grid) {
  saf_double_point_matrix sums(mask.width(), mask.height());
  for (int row = 0; row < mask.height(); ++row) {
    for (int column = 0; column < mask.width(); ++column) {
      if (!mask.At(column, row)) continue;
      const saf_int_rect area = grid.Block(column, row);
      saf_double_point& sum = sums.At(column, row);
      for (int y = area.y; y < area.bottom(); ++y) {
        for (int x = area.x; x < area.right(); ++x) {
          sum.x += pixels.At(x, y).x;
          sum.y += pixels.At(x, y).y;
        }
      }
    }
  }
  return sums;
}

double NeighbourhoodAngle(const saf_double_point_matrix& sums, int column, int row) {
  saf_double_point sum;
  for (int y = std::max(row - 1, 0); y <= std::min(row + 1, sums.height() - 1); ++y) {
    for (int x = std::max(column - 1, 0); x <= std::min(column + 1, sums.width() - 1); ++x) {
      sum.x += sums.At(x, y).x;
      sum.y += sums.At(x, y).y;
    }
  }
  return saf_angle_of(sum.x, sum.y);
}

}  // namespace

double saf_random::Next() {
  constexpr double kScale = 9.313225746154785e-10;
  state_ *= 0x60000005;
  return (static_cast<double>(state_ & 0x3fffffff) + 0.5) * kScale;
}

const saf_orientation_sets& saf_orientation_samples() {
  static const saf_orientation_sets sets = MakeSets();
  return sets;
}

saf_double_point_matrix saf_pixelwise_orientations(const saf_double_matrix& image,
                                                   const saf_boolean_matrix& block_mask,
                                                   const saf_block_map& blocks) {
  const saf_orientation_sets& sets = saf_orientation_samples();
  saf_double_point_matrix pixels(image.width(), image.height());
  RowSums sums{std::vector<double>(static_cast<size_t>(image.width())),
               std::vector<double>(static_cast<size_t>(image.width()))};
  for (int row = 0; row < block_mask.height(); ++row) {
    const saf_int_range range = MaskedRange(block_mask, blocks.primary, row);
    const saf_int_rect area = blocks.primary.Block(0, row);
    for (int y = area.y; y < area.bottom(); ++y) {
      for (const auto& sample : sets[static_cast<size_t>(y % kOrientationSets)]) {
        AddSample(image, y, range, sample, sums);
      }
      Store(sums, range, pixels.Row(y));
    }
  }
  return pixels;
}

saf_double_matrix saf_block_orientations(const saf_double_point_matrix& pixels,
                                         const saf_boolean_matrix& block_mask, const saf_block_map& blocks) {
  const saf_double_point_matrix sums = SumBlocks(pixels, block_mask, blocks.primary);
  saf_double_matrix angles(block_mask.width(), block_mask.height());
  for (int row = 0; row < angles.height(); ++row) {
    for (int column = 0; column < angles.width(); ++column) {
      if (block_mask.At(column, row)) angles.At(column, row) = NeighbourhoodAngle(sums, column, row);
    }
  }
  return angles;
}

}  // namespace vorc
