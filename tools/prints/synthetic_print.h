#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/picture.h"

namespace vorc::synthetic {

/// Uniform numbers that are the same everywhere.
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  /// In [low, high).
  double Between(double low, double high);

 private:
  uint64_t state_;
};

/// The skin of one finger: ridges at values near 1, valleys near -1.
struct Finger {
  int width = 0;
  int height = 0;
  std::vector<double> relief;
};

/// Grows the ridges of a finger from noise along the flow of an arch, a loop, a whorl or a double
/// loop, as the seed has it. Where lines don't fit side by side, minutiae arise by themselves.
Finger GrowFinger(uint64_t seed, int width = 280, int height = 340);

/// How a finger is put on the glass.
struct Impression {
  double turn = 0;     ///< radians
  double shift_x = 0;  ///< pixels
  double shift_y = 0;
  double pressure = 0;   ///< -0.5 (thin ridges) .. 0.5 (thick ones)
  double noise = 0.1;    ///< 0 .. 1
  double stretch = 0;    ///< pixels by which the skin is pulled out of place
  int cuts = 0;          ///< white scratches across the print
  double visible = 1;    ///< share of the finger's width and height that touches
  double visible_x = 0;  ///< where the touching part lies, -1 .. 1
  double visible_y = 0;
};

/// An impression with all of its parts drawn by chance, within what is usual for a careful scan.
Impression RandomImpression(Random& random);

/// The grey picture of an impression, `margin` pixels larger than the finger on all sides.
GrayPicture Scan(const Finger& finger, const Impression& impression, uint64_t seed, int margin = 30);

/// A picture as the bytes of a PGM file.
std::string ToPgm(const GrayPicture& picture);

}  // namespace vorc::synthetic
