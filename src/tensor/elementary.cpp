#include "tensor/elementary.h"

#include <algorithm>
#include <bit>
#include <iterator>

namespace vorc {

namespace {

/// A number as the unevaluated sum of two doubles, the second below the last place of the first.
struct Pair {
  double high;
  double low;
};

// The exact sum, for |a| >= |b|.
Pair SumOf(double a, double b) {
  const double sum = a + b;
  return {sum, b - (sum - a)};
}

// The exact sum, in any order of size (Knuth).
Pair AnySumOf(double a, double b) {
  const double sum = a + b;
  const double part = sum - a;
  return {sum, (a - (sum - part)) + (b - part)};
}

// A double as the exact sum of two halves of 26 bits (Veltkamp).
Pair HalvesOf(double a) {
  constexpr double kSplitter = 0x1p27 + 1;
  const double scaled = a * kSplitter;
  const double high = scaled - (scaled - a);
  return {high, a - high};
}

// The exact product (Dekker).
Pair ProductOf(double a, double b) {
  const double product = a * b;
  const Pair x = HalvesOf(a);
  const Pair y = HalvesOf(b);
  return {product, ((x.high * y.high - product) + x.high * y.low + x.low * y.high) + x.low * y.low};
}

Pair Times(Pair a, Pair b) {
  const Pair product = ProductOf(a.high, b.high);
  return {product.high, product.low + (a.high * b.low + a.low * b.high)};
}

constexpr Pair kSixth = {0x1.5555555555555p-3, 0x1.5555555555555p-57};
constexpr Pair kTwentyFourth = {0x1.5555555555555p-5, 0x1.5555555555555p-59};

double Sine(Pair r, Pair square) {
  const Pair cube = Times(Times(square, r), kSixth);
  const double s = square.high;
  const double rest =
      r.high * s * s *
      (1.0 / 120 -
       s * (1.0 / 5040 -
            s * (1.0 / 362880 - s * (1.0 / 39916800 - s * (1.0 / 6227020800 - s * (1.0 / 1307674368000 -
                                                                                   s / 355687428096000))))));
  const Pair sum = SumOf(r.high, -cube.high);
  return sum.high + (sum.low + (r.low - cube.low + rest));
}

double Cosine(Pair square) {
  const Pair fourth = Times(Times(square, square), kTwentyFourth);
  const double s = square.high;
  const double rest =
      s * s * s *
      (1.0 / 720 -
       s * (1.0 / 40320 - s * (1.0 / 3628800 - s * (1.0 / 479001600 -
                                                    s * (1.0 / 87178291200 - s * (1.0 / 20922789888000 -
                                                                                  s / 6402373705728000))))));
  const Pair first = SumOf(1.0, -0.5 * square.high);
  const Pair second = SumOf(first.high, fourth.high);
  return second.high + (second.low + (first.low - 0.5 * square.low + fourth.low - rest));
}

// What is left of an angle after `turns` quarter turns.
Pair WithoutQuarterTurns(double angle, double turns) {
  // pi / 2 in pieces so short that their products with up to 2^31 turns are exact.
  constexpr double kPieces[] = {0x1.921fbp+0, 0x1.5110bp-22, 0x1.1846980000000p-44, 0x1.3198a2e037073p-69};
  Pair rest = {angle, 0.0};
  for (const double piece : kPieces) {
    const Pair difference = AnySumOf(rest.high, -(turns * piece));
    rest = AnySumOf(difference.high, difference.low + rest.low);
  }
  return rest;
}

}  // namespace

double ExpOfNegative(double x) {
  if (x != x) return x;
  if (x < kLowestExponent) return 0.0;
  if (x >= kLowestNormalExponent) return ExpInRange(x);
  constexpr double kShift = 64.0;
  return ExpInRange(x + kShift) * ExpInRange(-kShift);
}

double LogFromOne(double x) {
  constexpr Pair kStep = {0x1.62e42feep-7, 0x1.a39ef35793c76p-39};  // ln 2 / 64; the first one is short
  constexpr uint64_t kMantissa = (uint64_t{1} << 52) - 1;
  constexpr uint64_t kExponentOfOne = 1023;
  if (x != x) return x;
  const uint64_t bits = std::bit_cast<uint64_t>(x);
  const auto octaves = static_cast<double>(static_cast<int64_t>(bits >> 52) - int64_t{kExponentOfOne});
  const double mantissa = std::bit_cast<double>((bits & kMantissa) | kExponentOfOne << 52);
  const auto above = std::upper_bound(std::begin(kPowers), std::end(kPowers), mantissa);
  const auto index = static_cast<size_t>(above - std::begin(kPowers)) - 1;

  const double power = kPowers[index];
  const double distance = mantissa - power;
  const double q = distance / power;
  const Pair product = ProductOf(q, power);
  const double q_low = ((distance - product.high) - product.low - kPowerTails[index] * (1.0 + q)) / power;
  const double steps = octaves * kPowersPerOctave + static_cast<double>(index);
  double series = -1.0 / 10;
  for (int term = 9; term > 1; --term) series = (term % 2 == 1 ? 1.0 : -1.0) / term + q * series;
  series *= q * q;
  const Pair sum = AnySumOf(steps * kStep.high, q);
  return sum.high + (sum.low + (steps * kStep.low + q_low + series));
}

double PowerOfTenThousand(double y) {
  constexpr Pair kLogarithm = {0x1.26bb1bbb55516p+3, -0x1.f48ad494ea3e9p-51};
  const Pair exponent = ProductOf(y, kLogarithm.high);
  return ExpInRange(exponent.high, exponent.low + y * kLogarithm.low);
}

SineCosine SineCosineOf(double angle) {
  constexpr double kTurnsPerRadian = 0x1.45f306dc9c883p-1;  // 2 / pi
  constexpr double kRounding = 0x1.8p52;
  const double turns = (angle * kTurnsPerRadian + kRounding) - kRounding;
  const Pair r = WithoutQuarterTurns(angle, turns);
  const Pair square = Times(r, r);
  const double sine = Sine(r, square);
  const double cosine = Cosine(square);
  switch (static_cast<int64_t>(turns) & 3) {
    case 0: return {sine, cosine};
    case 1: return {cosine, -sine};
    case 2: return {-sine, -cosine};
    default: return {-cosine, sine};
  }
}

}  // namespace vorc
