#pragma once

#include "fingerprint/block_map.h"
#include "fingerprint/matrix.h"

namespace vorc {

/// Marks the blocks that show a print, by their contrast.
saf_boolean_matrix saf_segmentation_mask(const saf_block_map& blocks, const saf_histogram_cube& histograms);

/// Spreads a mask of blocks to their pixels.
saf_boolean_matrix saf_segmentation_pixelwise(const saf_boolean_matrix& mask, const saf_block_map& blocks);

/// The part of a pixel mask that lies 14 pixels or more from its border.
saf_boolean_matrix saf_segmentation_inner(const saf_boolean_matrix& mask);

// The steps of the mask.

/// The spread of each block's grey levels, 0 to 1, without the extreme 8% at both ends.
saf_double_matrix saf_clipped_contrast(const saf_histogram_cube& histograms);
/// Marks blocks of too little contrast.
saf_boolean_matrix saf_absolute_contrast_mask(const saf_double_matrix& contrast);
/// Marks blocks of much less contrast than the picture's best ones have.
saf_boolean_matrix saf_relative_contrast_mask(const saf_double_matrix& contrast, const saf_block_map& blocks);
/// Keeps cells whose four neighbours at distance `amount` are set.
saf_boolean_matrix saf_segmentation_shrink(const saf_boolean_matrix& mask, int amount);

}  // namespace vorc
