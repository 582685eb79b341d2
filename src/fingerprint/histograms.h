#pragma once

#include "fingerprint/block_map.h"
#include "fingerprint/matrix.h"

namespace vorc {

inline constexpr int kHistogramDepth = 256;

/// Counts the grey levels, 0 to 1, of each primary block.
saf_histogram_cube saf_local_histograms_create(const saf_block_map& blocks, const saf_double_matrix& image);

/// For each corner of the primary grid, the sum of the histograms of the blocks that touch it.
saf_histogram_cube saf_local_histograms_smooth(const saf_block_map& blocks, const saf_histogram_cube& input);

}  // namespace vorc
