#pragma once

#include <cstddef>
#include <cstdint>

#include "tensor/powers_of_two.h"

// The host's own functions give other last bits with and without fused multiply-add, so results
// would depend on the machine. These don't: they are plain products and sums, in this order.

namespace vorc {

/// Below this, the exponential is no longer a normal number.
inline constexpr double kLowestNormalExponent = -708.0;
/// Below this, it rounds to zero.
inline constexpr double kLowestExponent = -746.0;

/// One double, or a register of several: what arithmetic works on at a time.
template <size_t width>
struct Lanes {
  typedef double Type __attribute__((vector_size(width * sizeof(double))));
  typedef uint64_t Bits __attribute__((vector_size(width * sizeof(double))));
};
template <>
struct Lanes<1> {
  using Type = double;
  using Bits = uint64_t;
};

/// Fetches one value of a table for each lane.
template <size_t width>
[[gnu::always_inline]] inline void Pick(const double* table, const typename Lanes<width>::Bits& indexes,
                                        typename Lanes<width>::Type& picked) {
  if constexpr (width == 1) {
    picked = table[indexes];
  } else {
    for (size_t i = 0; i < width; ++i) picked[i] = table[indexes[i]];
  }
}

/// result = exp(x + tail) for x from -708 to 709 and a tail that is small against x; any other x
/// gives some number. Within 0.52 units in the last place.
template <size_t width>
[[gnu::always_inline]] inline void ExpInRange(const typename Lanes<width>::Type& x,
                                              const typename Lanes<width>::Type& tail,
                                              typename Lanes<width>::Type& result) {
  using Type = typename Lanes<width>::Type;
  using Bits = typename Lanes<width>::Bits;
  constexpr double kStepsPerUnit = 0x1.71547652b82fep+6;  // 64 / ln 2
  constexpr double kStepHigh = 0x1.62e42feep-7;           // ln 2 / 64, so short that products are exact
  constexpr double kStepLow = 0x1.a39ef35793c76p-39;      // and what it lacks
  constexpr double kRounding = 0x1.8p52;                  // adding it leaves an integer in the low bits
  constexpr int kExponentShift = 52 - 6;
  constexpr uint64_t kIndexMask = kPowersPerOctave - 1;

  const Type shifted = x * kStepsPerUnit + kRounding;
  const Type steps = shifted - kRounding;
  const Bits bits = __builtin_bit_cast(Bits, shifted);
  const Bits index = bits & kIndexMask;
  const Type r = (x - steps * kStepHigh) - (steps * kStepLow - tail);
  const Type series =
      r + r * r * (0.5 + r * (1.0 / 6.0 + r * (1.0 / 24.0 + r * (1.0 / 120.0 + r * (1.0 / 720.0)))));
  Type power;
  Type power_tail;
  Pick<width>(kPowers, index, power);
  Pick<width>(kPowerTails, index, power_tail);
  const Type value = power + (power_tail + power * series);
  result =
      __builtin_bit_cast(Type, __builtin_bit_cast(Bits, value) + ((bits & ~kIndexMask) << kExponentShift));
}

/// The same for one number.
inline double ExpInRange(double x, double tail = 0.0) {
  double result;
  ExpInRange<1>(x, tail, result);
  return result;
}

/// exp(x) for any x up to 0; NaN for NaN.
double ExpOfNegative(double x);

/// The natural logarithm of a finite x of at least 1; NaN for NaN. Within 0.65 units in the last place.
double LogFromOne(double x);

/// 10000 to the power of y, for y from 0 to 1. Within 0.52 units in the last place.
double PowerOfTenThousand(double y);

struct SineCosine {
  double sine;
  double cosine;
};

/// Sine and cosine of an angle in radians from 0 to 2^31. Within 0.52 units in the last place.
SineCosine SineCosineOf(double angle);

}  // namespace vorc
