#include "fingerprint/histograms.h"

namespace vorc {

saf_histogram_cube saf_local_histograms_create(const saf_block_map& blocks, const saf_double_matrix& image) {
  const saf_block_grid& grid = blocks.primary;
  saf_histogram_cube histograms(grid.columns(), grid.rows(), kHistogramDepth);
  for (int row = 0; row < grid.rows(); ++row) {
    for (int column = 0; column < grid.columns(); ++column) {
      const saf_int_rect area = grid.Block(column, row);
      int* bins = histograms.Bins(column, row);
      for (int y = area.y; y < area.bottom(); ++y) {
        const double* levels = image.Row(y);
        for (int x = area.x; x < area.right(); ++x) {
          const int bin = static_cast<int>(levels[x] * kHistogramDepth);
          ++bins[saf_histogram_cube_constrain(bin, kHistogramDepth)];
        }
      }
    }
  }
  return histograms;
}

saf_histogram_cube saf_local_histograms_smooth(const saf_block_map& blocks, const saf_histogram_cube& input) {
  saf_histogram_cube corners(blocks.secondary.columns(), blocks.secondary.rows(), input.depth());
  for (int row = 0; row < corners.height(); ++row) {
    for (int column = 0; column < corners.width(); ++column) {
      int* sums = corners.Bins(column, row);
      for (int y = std::max(row - 1, 0); y <= std::min(row, input.height() - 1); ++y) {
        for (int x = std::max(column - 1, 0); x <= std::min(column, input.width() - 1); ++x) {
          const int* bins = input.Bins(x, y);
          for (int i = 0; i < input.depth(); ++i) sums[i] += bins[i];
        }
      }
    }
  }
  return corners;
}

}  // namespace vorc
