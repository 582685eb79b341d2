#pragma once

#include "fingerprint/block_map.h"
#include "fingerprint/matrix.h"

namespace vorc {

/// Sets the pixels of masked blocks where the picture smoothed along the ridges is darker than the one
/// that is smoothed across them as well.
saf_boolean_matrix saf_binarize(const saf_double_matrix& parallel, const saf_double_matrix& orthogonal,
                                const saf_boolean_matrix& block_mask, const saf_block_map& blocks);

/// Closes holes, drops islands, and takes apart what touches by corners alone.
saf_boolean_matrix saf_binarized_cleanup(saf_boolean_matrix binary, const saf_boolean_matrix& pixel_mask);

/// The valleys: what isn't set within the mask.
saf_boolean_matrix saf_binarized_invert(const saf_boolean_matrix& binary,
                                        const saf_boolean_matrix& pixel_mask);

}  // namespace vorc
