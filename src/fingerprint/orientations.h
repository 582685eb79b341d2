#pragma once

#include <array>
#include <cstdint>

#include "fingerprint/block_map.h"
#include "fingerprint/matrix.h"

namespace vorc {

/// A vector per masked pixel: its doubled angle is the orientation of the ridge there, its length the
/// certainty. Zero elsewhere.
saf_double_point_matrix saf_pixelwise_orientations(const saf_double_matrix& image,
                                                   const saf_boolean_matrix& block_mask,
                                                   const saf_block_map& blocks);

/// The doubled angle of the ridges in each masked block, from its pixels' and its neighbours' vectors.
saf_double_matrix saf_block_orientations(const saf_double_point_matrix& pixels,
                                         const saf_boolean_matrix& block_mask, const saf_block_map& blocks);

/// A pixel is compared with the two at `offset` to both sides of it.
struct saf_orientation_sample {
  saf_int_point offset;
  /// Unit vector of the ridge that such a pair speaks for, by doubled angle.
  saf_double_point vector;
};

inline constexpr int kOrientationSets = 50;
inline constexpr int kOrientationSamples = 20;
using saf_orientation_sets =
    std::array<std::array<saf_orientation_sample, kOrientationSamples>, kOrientationSets>;

/// The sample sets, the same in every run.
const saf_orientation_sets& saf_orientation_samples();

/// Numbers between 0 and 1 in a fixed sequence.
class saf_random {
 public:
  double Next();

 private:
  uint64_t state_ = 0x2000007d;
};

}  // namespace vorc
