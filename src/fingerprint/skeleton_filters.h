#pragma once

#include "fingerprint/skeleton.h"

namespace vorc {

/// Cleans a traced skeleton: the filters below in their order.
void saf_skeleton_filters_apply(saf_skeleton& skeleton);

/// Forgets minutiae without ridges.
void saf_skeleton_dot_filter(saf_skeleton& skeleton);
/// Makes one ridge of two wherever a minutia has just these.
void saf_skeleton_knot_filter(saf_skeleton& skeleton);
/// Replaces small closed loops, which sweat pores leave, by a straight line.
void saf_skeleton_pore_filter(saf_skeleton& skeleton);
/// Joins ends of ridges that face each other over a short gap.
void saf_skeleton_gap_filter(saf_skeleton& skeleton);
/// Cuts short spurs off branchings.
void saf_skeleton_tail_filter(saf_skeleton& skeleton);
/// Removes short ridges that hang on nothing.
void saf_skeleton_fragment_filter(saf_skeleton& skeleton);

}  // namespace vorc
