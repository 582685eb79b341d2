#pragma once

#include <vector>

#include "fingerprint/matrix.h"

namespace vorc {

/// Blocks between neighbouring corner lines.
struct saf_block_grid {
  std::vector<int> x;
  std::vector<int> y;

  int columns() const { return static_cast<int>(x.size()) - 1; }
  int rows() const { return static_cast<int>(y.size()) - 1; }
  saf_int_rect Block(int column, int row) const;
};

/// A picture divided into blocks of nearly equal size. The secondary grid has one block around each
/// corner of the primary one, cut at the picture's edge.
struct saf_block_map {
  int width = 0;
  int height = 0;
  saf_block_grid primary;
  saf_block_grid secondary;
};

/// Divides width x height pixels, both at least 1, into as few blocks as keep within `block_size`.
saf_block_map saf_block_map_create(int width, int height, int block_size);

}  // namespace vorc
