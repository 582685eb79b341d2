#include "fingerprint/segmentation.h"

#include <functional>

#include "fingerprint/angles.h"
#include "fingerprint/vote_filter.h"

namespace vorc {

namespace {

constexpr double kClippedShare = 0.08;
constexpr double kMinContrast = 17.0 / 255.0;
constexpr int kReferencePixels = 168568;
constexpr double kBestShare = 0.49;
constexpr double kMinRelativeContrast = 0.34;
constexpr int kInnerDistance = 14;
constexpr VoteRule kBlockErrors{1, 4, 0.7};
constexpr VoteRule kMaskSmoothing{7, 4, 0.51};

/// The first bin, walking by `step`, with more than `limit` samples in all up to it.
int BinBehind(const int* bins, int start, int step, int depth, int limit) {
  int sum = 0;
  int bin = start;
  for (int i = 0; i < depth; ++i, bin += step) {
    sum += bins[bin];
    if (sum > limit) return bin;
  }
  return start;
}

double ClippedSpread(const int* bins, int depth) {
  int count = 0;
  for (int i = 0; i < depth; ++i) count += bins[i];
  const int clipped = saf_round(count * kClippedShare);
  const int low = BinBehind(bins, 0, 1, depth, clipped);
  const int high = BinBehind(bins, depth - 1, -1, depth, clipped);
  return static_cast<double>(high - low) / (depth - 1);
}

saf_boolean_matrix MarkBelow(const saf_double_matrix& values, double limit) {
  saf_boolean_matrix marks(values.width(), values.height());
  for (size_t i = 0; i < values.cells().size(); ++i) marks.cells()[i] = values.cells()[i] < limit;
  return marks;
}

void Merge(saf_boolean_matrix& mask, const saf_boolean_matrix& other) {
  for (size_t i = 0; i < mask.cells().size(); ++i) mask.cells()[i] |= other.cells()[i];
}

void Invert(saf_boolean_matrix& mask) {
  for (uint8_t& cell : mask.cells()) cell = !cell;
}

saf_boolean_matrix WithoutEdge(const saf_boolean_matrix& mask) {
  saf_boolean_matrix inner(mask.width(), mask.height());
  for (int y = 1; y < mask.height() - 1; ++y) {
    for (int x = 1; x < mask.width() - 1; ++x) inner.At(x, y) = mask.At(x, y);
  }
  return inner;
}

}  // namespace

saf_double_matrix saf_clipped_contrast(const saf_histogram_cube& histograms) {
  saf_double_matrix contrast(histograms.width(), histograms.height());
  for (int y = 0; y < contrast.height(); ++y) {
    for (int x = 0; x < contrast.width(); ++x) {
      contrast.At(x, y) = ClippedSpread(histograms.Bins(x, y), histograms.depth());
    }
  }
  return contrast;
}

saf_boolean_matrix saf_absolute_contrast_mask(const saf_double_matrix& contrast) {
  return MarkBelow(contrast, kMinContrast);
}

saf_boolean_matrix saf_relative_contrast_mask(const saf_double_matrix& contrast,
                                              const saf_block_map& blocks) {
  std::vector<double> sorted = contrast.cells();
  std::sort(sorted.begin(), sorted.end(), std::greater<>());
  const int all = static_cast<int>(sorted.size());
  const int block_area = blocks.width * blocks.height / all;
  const int count = saf_round(std::min(kReferencePixels / block_area, all) * kBestShare);
  double sum = 0;
  for (int i = 0; i < count; ++i) sum += sorted[static_cast<size_t>(i)];
  return MarkBelow(contrast, count == 0 ? 0 : sum / count * kMinRelativeContrast);
}

saf_boolean_matrix saf_segmentation_mask(const saf_block_map& blocks, const saf_histogram_cube& histograms) {
  const saf_double_matrix contrast = saf_clipped_contrast(histograms);
  saf_boolean_matrix mask = saf_absolute_contrast_mask(contrast);
  Merge(mask, saf_relative_contrast_mask(contrast, blocks));
  Merge(mask, saf_vote_filter(mask, nullptr, kBlockErrors));
  Invert(mask);
  Merge(mask, saf_vote_filter(mask, nullptr, kBlockErrors));
  Merge(mask, saf_vote_filter(mask, nullptr, kBlockErrors));
  Merge(mask, saf_vote_filter(mask, nullptr, kMaskSmoothing));
  return mask;
}

saf_boolean_matrix saf_segmentation_pixelwise(const saf_boolean_matrix& mask, const saf_block_map& blocks) {
  saf_boolean_matrix pixels(blocks.width, blocks.height);
  for (int row = 0; row < mask.height(); ++row) {
    for (int column = 0; column < mask.width(); ++column) {
      if (!mask.At(column, row)) continue;
      const saf_int_rect area = blocks.primary.Block(column, row);
      for (int y = area.y; y < area.bottom(); ++y)
        std::fill_n(pixels.Row(y) + area.x, area.width, uint8_t{1});
    }
  }
  return pixels;
}

saf_boolean_matrix saf_segmentation_shrink(const saf_boolean_matrix& mask, int amount) {
  saf_boolean_matrix shrunk(mask.width(), mask.height());
  for (int y = amount; y < mask.height() - amount; ++y) {
    const uint8_t* above = mask.Row(y - amount);
    const uint8_t* row = mask.Row(y);
    const uint8_t* below = mask.Row(y + amount);
    uint8_t* result = shrunk.Row(y);
    for (int x = amount; x < mask.width() - amount; ++x) {
      result[x] = above[x] & below[x] & row[x - amount] & row[x + amount];
    }
  }
  return shrunk;
}

saf_boolean_matrix saf_segmentation_inner(const saf_boolean_matrix& mask) {
  saf_boolean_matrix inner = saf_segmentation_shrink(WithoutEdge(mask), 1);
  int total = 1;
  for (int step = 1; total + step <= kInnerDistance; step *= 2) {
    inner = saf_segmentation_shrink(inner, step);
    total += step;
  }
  return saf_segmentation_shrink(inner, kInnerDistance - total);
}

}  // namespace vorc
