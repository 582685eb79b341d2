#pragma once

#include <vector>

#include "fingerprint/feature_template.h"
#include "fingerprint/matrix.h"
#include "fingerprint/skeleton.h"

namespace vorc {

/// The ends of the ridges of both skeletons, those of `ridges` first.
std::vector<saf_minutia> saf_minutiae_collect_both(const saf_skeleton& ridges, const saf_skeleton& valleys);

/// Keeps minutiae that end well inside the mask, not at the edge of the print.
void saf_inner_minutiae_filter(std::vector<saf_minutia>& minutiae, const saf_boolean_matrix& mask);

/// Drops minutiae in crowds: where they are dense, they come from noise.
void saf_minutia_cloud_filter(std::vector<saf_minutia>& minutiae);

/// Of more than 100 minutiae, keeps the 100 that stand most alone.
void saf_top_minutiae_filter(std::vector<saf_minutia>& minutiae);

}  // namespace vorc
