#pragma once

#include "fingerprint/block_map.h"
#include "fingerprint/matrix.h"

namespace vorc {

/// What pixels outside the mask get.
inline constexpr double kBackground = -1;

/// Equalizes the grey levels of the masked blocks to -1 (white) .. 1, by the histograms of a block's
/// four corners, interpolated between them.
saf_double_matrix saf_image_equalize(const saf_block_map& blocks, const saf_double_matrix& image,
                                     const saf_histogram_cube& corner_histograms,
                                     const saf_boolean_matrix& block_mask);

}  // namespace vorc
