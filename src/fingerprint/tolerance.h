#pragma once

#include "fingerprint/angles.h"

namespace vorc {

// How far two edges of one finger may differ between two pictures of it.
inline constexpr int kLengthTolerance = 13;
inline constexpr float kAngleTolerance = 0.17453292f;
inline constexpr float kComplementaryTolerance = static_cast<float>(kFullCircle) - kAngleTolerance;

/// For a difference in [0, 2 pi).
inline bool WithinAngleTolerance(float difference) {
  return difference <= kAngleTolerance || difference >= kComplementaryTolerance;
}

}  // namespace vorc
