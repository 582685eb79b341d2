#pragma once

#include <cmath>

#include "fingerprint/matrix.h"

namespace vorc {

inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double kFullCircle = 2 * kPi;

// Trigonometry of basic operations alone. That of the system's library differs between releases and
// processors in the last bit, and templates must not.

/// Sine and cosine as a unit vector, for angles of a few circles at most.
saf_double_point saf_angle_to_vector(double angle);

/// The angle of a vector in [0, 2 pi); 0 for the zero vector.
double saf_angle_of(double x, double y);

/// e to a power between -2 and 2.
double saf_exp(double power);

/// `start` at position 0 and `end` at position 1, growing by the same factor for equal steps.
double saf_interpolate_exponential(double start, double end, double position);

/// `angle` brought into [0, 2 pi), from less than a circle outside.
template <typename Real>
Real saf_angle_normalize(Real angle) {
  constexpr Real kCircle = static_cast<Real>(kFullCircle);
  if (angle < 0) angle += kCircle;
  return angle < kCircle ? angle : angle - kCircle;
}

/// Doubles an angle, so that opposite directions coincide.
inline double saf_angle_to_orientation(double angle) {
  return saf_angle_normalize(2 * (angle < kPi ? angle : angle - kPi));
}

/// The smaller of the two directions that an orientation stands for.
inline double saf_angle_from_orientation(double orientation) {
  return 0.5 * orientation;
}

/// How far `a` lies ahead of `b`, in [0, 2 pi).
template <typename Real>
Real saf_angle_difference(Real a, Real b) {
  return saf_angle_normalize(a - b);
}

/// The smaller arc between two angles.
template <typename Real>
Real saf_angle_distance(Real a, Real b) {
  const Real difference = std::fabs(a - b);
  return std::fmin(difference, static_cast<Real>(kFullCircle) - difference);
}

template <typename Real>
Real saf_angle_opposite(Real angle) {
  constexpr Real kHalf = static_cast<Real>(kPi);
  return angle < kHalf ? angle + kHalf : angle - kHalf;
}

/// Nearest integer, halves upwards.
inline int saf_round(double value) {
  return static_cast<int>(std::floor(value + 0.5));
}

}  // namespace vorc
