#pragma once

#include "fingerprint/matrix.h"

namespace vorc {

struct VoteRule {
  int radius;
  /// Cells this near to the edge never come out set.
  int border;
  double majority;
};

/// Sets each cell whose window of `radius`, cut at the edge, has at least the share `majority` of its
/// cells set in `input`. With a mask, of the same size, only cells in it come out set.
saf_boolean_matrix saf_vote_filter(const saf_boolean_matrix& input, const saf_boolean_matrix* mask,
                                   const VoteRule& rule);

}  // namespace vorc
