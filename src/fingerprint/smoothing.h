#pragma once

#include <vector>

#include "fingerprint/block_map.h"
#include "fingerprint/matrix.h"

namespace vorc {

/// Pixels on a short line through the origin, for each of a number of orientations.
using saf_smoothing_lines = std::vector<std::vector<saf_int_point>>;

/// Lines for `resolution` steps of the half circle, each out to `radius` on both sides; from there
/// inwards, the distances of the points shrink by `step`.
saf_smoothing_lines saf_oriented_smoothing_lines(int resolution, int radius, double step);

/// Averages each masked block's pixels along the line of the block's orientation plus `offset` (both
/// doubled angles). Points outside the picture count as 0, and so do pixels outside the mask.
saf_double_matrix saf_oriented_smoothing_smooth(const saf_double_matrix& input,
                                                const saf_double_matrix& orientations,
                                                const saf_boolean_matrix& block_mask,
                                                const saf_block_map& blocks, double offset,
                                                const saf_smoothing_lines& lines);

}  // namespace vorc
