#include "fingerprint/angles.h"

#include <array>

namespace vorc {

namespace {

constexpr int kSteps = 16;

/// The series of the arc tangent, for arguments up to 1/16.
constexpr double SmallArcTangent(double x) {
  const double square = x * x;
  double sum = 0;
  for (int n = 13; n >= 1; n -= 2) sum = 1.0 / n - square * sum;
  return x * sum;
}

constexpr std::array<double, kSteps + 1> MakeArcTangents() {
  std::array<double, kSteps + 1> angles{};
  for (int k = 1; k <= kSteps; ++k) {
    const double step = (1.0 / kSteps) / (1.0 + static_cast<double>(k * (k - 1)) / (kSteps * kSteps));
    angles[static_cast<size_t>(k)] = angles[static_cast<size_t>(k - 1)] + SmallArcTangent(step);
  }
  return angles;
}

/// Arc tangents of the sixteenths from 0 to 1.
constexpr std::array<double, kSteps + 1> kArcTangents = MakeArcTangents();

/// Arc tangent of y / x for 0 <= y <= x, x > 0: the nearest sixteenth's, and the small rest's.
double ArcTangentBelowOne(double y, double x) {
  const int step = static_cast<int>(y / x * kSteps + 0.5);
  const double tangent = step / static_cast<double>(kSteps);
  return kArcTangents[static_cast<size_t>(step)] + SmallArcTangent((y - tangent * x) / (x + tangent * y));
}

/// The sum of `first` and its `count` following terms, each the one before times
/// factor / (n * (n + 1)), n growing by two from `n`.
double SumSeries(double first, double factor, int n, int count) {
  double sum = first;
  double term = first;
  for (int i = 0; i < count; ++i, n += 2) {
    term *= factor / (n * (n + 1));
    sum += term;
  }
  return sum;
}

}  // namespace

saf_double_point saf_angle_to_vector(double angle) {
  constexpr double kQuarterHigh = 1.5707963267341256;
  constexpr double kQuarterLow = 6.077100506506192e-11;
  constexpr int kTerms = 8;
  const int quarter = saf_round(angle / (kPi / 2));
  const double rest = (angle - quarter * kQuarterHigh) - quarter * kQuarterLow;
  const double sine = SumSeries(rest, -rest * rest, 2, kTerms);
  const double cosine = SumSeries(1, -rest * rest, 1, kTerms);
  switch (quarter & 3) {
    case 0: return {cosine, sine};
    case 1: return {-sine, cosine};
    case 2: return {-cosine, -sine};
    default: return {sine, -cosine};
  }
}

double saf_angle_of(double x, double y) {
  const double across = std::fabs(x);
  const double up = std::fabs(y);
  if (across == 0 && up == 0) return 0;
  double angle = up <= across ? ArcTangentBelowOne(up, across) : kPi / 2 - ArcTangentBelowOne(across, up);
  if (x < 0) angle = kPi - angle;
  return y < 0 ? saf_angle_normalize(kFullCircle - angle) : angle;
}

double saf_exp(double power) {
  constexpr int kTerms = 30;
  double sum = 1;
  for (int n = kTerms; n >= 1; --n) sum = 1 + power / n * sum;
  return sum;
}

double saf_interpolate_exponential(double start, double end, double position) {
  // The natural logarithm by the arc tangent's sister series, exact enough for ratios up to ten.
  const double ratio = (end - start) / (end + start);
  double logarithm = 0;
  for (int n = 199; n >= 1; n -= 2) logarithm = 1.0 / n + ratio * ratio * logarithm;
  return start * saf_exp(2 * ratio * logarithm * position);
}

}  // namespace vorc
