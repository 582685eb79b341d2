#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/picture.h"

namespace vorc::codes {

/// The picture that a QR code is searched in.
struct MorvQrImage {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> grey;
  std::vector<uint8_t> binary;  ///< 1 dark

  size_t At(int x, int y) const {
    return static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x);
  }
  bool Inside(int x, int y) const { return x >= 0 && y >= 0 && x < width && y < height; }
};

/// True for a dark pixel; outside the picture all is light.
inline bool dark_at(const MorvQrImage& image, int x, int y) {
  return image.Inside(x, y) && image.binary[image.At(x, y)] != 0;
}

/// The picture at full size, or shrunk by the least whole factor that makes both sides 1200 at most.
MorvQrImage Reduce(GrayPicture picture);

/// The grey level that parts dark (below it) from light with the greatest variance between both, the
/// middle one of equals; 128 for a picture of one level.
int OtsuThreshold(const std::vector<uint8_t>& grey);

/// Grey levels with noise smoothed away, by the mean of 3 x 3 pixels.
std::vector<uint8_t> Smoothed(const MorvQrImage& image);
/// Grey levels with the blur of a bad focus lessened, by an unsharp mask.
std::vector<uint8_t> Sharpened(const MorvQrImage& image);

/// How a block's threshold comes from its neighbourhood: `bias` below the mean, or in the middle of the
/// extremes.
struct ThresholdRule {
  bool middle = false;
  int bias = 0;
};

/// Sets the binary picture by thresholds of 16 x 16 blocks. Flat neighbourhoods take `otsu` instead.
void Binarise(MorvQrImage& image, ThresholdRule rule, int otsu);

}  // namespace vorc::codes
