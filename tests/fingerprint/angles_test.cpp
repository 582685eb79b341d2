#include "fingerprint/angles.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vorc {
namespace {

TEST(Angles, AgreeWithTheMathLibrary) {
  for (int i = -2000; i <= 4000; ++i) {
    const double angle = i * 0.0031;
    const saf_double_point vector = saf_angle_to_vector(angle);
    EXPECT_NEAR(vector.x, std::cos(angle), 4e-16) << angle;
    EXPECT_NEAR(vector.y, std::sin(angle), 4e-16) << angle;
    for (const double length : {1e-9, 1.0, 46340.0}) {
      const double expected = std::atan2(length * vector.y, length * vector.x);
      EXPECT_NEAR(saf_angle_of(length * vector.x, length * vector.y),
                  expected < 0 ? expected + 2 * std::acos(-1.0) : expected, 1e-15);
    }
    EXPECT_NEAR(saf_exp(i / 2000.0) / std::exp(i / 2000.0), 1, 1e-15);
    EXPECT_NEAR(saf_interpolate_exponential(2, 6, i / 4000.0), 2 * std::pow(3, i / 4000.0), 1e-14);
  }
  EXPECT_EQ(saf_angle_of(0, 0), 0);
  EXPECT_EQ(saf_angle_of(1, -1e-300), 0);
}

TEST(Angles, StayInTheCircle) {
  const double below_zero = std::nextafter(0.0, -1.0);
  for (const double angle :
       {below_zero, 0.0, kPi, kFullCircle, std::nextafter(kFullCircle, 0.0), -1.0, 7.0}) {
    EXPECT_GE(saf_angle_normalize(angle), 0) << angle;
    EXPECT_LT(saf_angle_normalize(angle), kFullCircle) << angle;
  }
  EXPECT_NEAR(saf_angle_difference(0.1, 6.2), kFullCircle - 6.1, 1e-15);
  EXPECT_NEAR(saf_angle_distance(0.1, 6.2), kFullCircle - 6.1, 1e-15);
  EXPECT_NEAR(saf_angle_to_orientation(saf_angle_opposite(0.7)), saf_angle_to_orientation(0.7), 1e-15);
}

}  // namespace
}  // namespace vorc
