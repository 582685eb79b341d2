#pragma once

#include "fingerprint/skeleton.h"

namespace vorc {

/// The graph of a thinned picture whose outermost pixels are clear. Pixels with one neighbour or with
/// three and more become minutiae, adjoining ones a single one; closed lines without any are left out.
saf_skeleton saf_skeleton_trace(const saf_boolean_matrix& thinned);

}  // namespace vorc
