#pragma once

#include <array>
#include <optional>
#include <vector>

#include "codes/geometry.h"

namespace vorc::codes {

/// A projective map of the plane, row by row, the last entry 1.
using Homography = std::array<double, 9>;

/// A place in module coordinates and the pixel that it lies on.
struct PointPair {
  Point module;
  Point pixel;
};

/// The map that fits at least four pairs best, by least squares over the normal equations; nothing if
/// they are degenerate.
std::optional<Homography> homography_ls(const std::vector<PointPair>& pairs);

/// The map that four pairs define exactly; nothing if they are degenerate.
std::optional<Homography> ExactHomography(const std::array<PointPair, 4>& pairs);

/// Where a place of module coordinates lies in the picture.
inline Point project(const Homography& h, Point at) {
  constexpr double kLeastDenominator = 1e-12;
  double denominator = h[6] * at.x + h[7] * at.y + h[8];
  if (std::abs(denominator) < kLeastDenominator) denominator = kLeastDenominator;
  const double factor = 1.0 / denominator;
  return {(h[0] * at.x + h[1] * at.y + h[2]) * factor, (h[3] * at.x + h[4] * at.y + h[5]) * factor};
}

}  // namespace vorc::codes
