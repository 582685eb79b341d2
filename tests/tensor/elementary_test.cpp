#include "tensor/elementary.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace vorc {
namespace {

// How far a result is from the true value, in units of the result's last place.
double UnitsOff(double result, long double truth) {
  const double nearest = static_cast<double>(truth);
  const double unit =
      std::nextafter(std::fabs(nearest), std::numeric_limits<double>::max()) - std::fabs(nearest);
  return static_cast<double>(std::fabs(result - truth) / unit);
}

TEST(Elementary, IsAsNearAsADoubleCanBe) {
  std::mt19937_64 random(1);
  const auto uniform = [&](double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(random);
  };
  for (int i = 0; i < 50000; ++i) {
    const double x = -std::exp(uniform(-30, 6.56));
    EXPECT_LT(UnitsOff(ExpOfNegative(x), std::exp(static_cast<long double>(x))), 0.52) << x;
    const double y = 1 + std::exp(uniform(-36, 22));
    EXPECT_LT(UnitsOff(LogFromOne(y), std::log(static_cast<long double>(y))), 0.66) << y;
    const double z = uniform(0, 1);
    EXPECT_LT(UnitsOff(PowerOfTenThousand(z), std::pow(10000.0L, static_cast<long double>(z))), 0.52) << z;
    const double angle = i % 2 == 0 ? i : uniform(0, 0x1p31);
    const SineCosine wave = SineCosineOf(angle);
    if (angle > 0) {
      EXPECT_LT(UnitsOff(wave.sine, std::sin(static_cast<long double>(angle))), 0.52) << angle;
    }
    EXPECT_LT(UnitsOff(wave.cosine, std::cos(static_cast<long double>(angle))), 0.52) << angle;
  }
}

TEST(Elementary, Ends) {
  EXPECT_EQ(ExpOfNegative(0.0), 1.0);
  EXPECT_EQ(ExpOfNegative(-745.0), std::numeric_limits<double>::denorm_min());
  EXPECT_NEAR(ExpOfNegative(-740.0), std::exp(-740.0), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(ExpOfNegative(-1e9), 0.0);
  EXPECT_EQ(ExpOfNegative(-std::numeric_limits<double>::infinity()), 0.0);
  EXPECT_TRUE(std::isnan(ExpOfNegative(std::numeric_limits<double>::quiet_NaN())));
  EXPECT_TRUE(std::isnan(LogFromOne(std::numeric_limits<double>::quiet_NaN())));
  EXPECT_EQ(LogFromOne(1.0), 0.0);
  EXPECT_EQ(PowerOfTenThousand(0.0), 1.0);
  EXPECT_EQ(PowerOfTenThousand(0.25), 10.0);
  EXPECT_EQ(SineCosineOf(0.0).sine, 0.0);
}

}  // namespace
}  // namespace vorc
