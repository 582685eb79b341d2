#pragma once

#include <cstdint>
#include <vector>

namespace vorc {

enum saf_minutia_type : uint8_t { kRidgeEnding = 0, kValleyEnding = 1 };

/// Where a ridge, or the valley between two ridges, ends. Direction in radians, into the ridge, with
/// y downwards.
struct saf_minutia {
  int16_t x = 0;
  int16_t y = 0;
  float direction = 0;
  saf_minutia_type type = kRidgeEnding;

  friend bool operator==(const saf_minutia&, const saf_minutia&) = default;
};

/// What is known of one print, in pixels of 1/500 inch.
struct saf_feature_template {
  int width = 0;
  int height = 0;
  std::vector<saf_minutia> minutiae;

  friend bool operator==(const saf_feature_template&, const saf_feature_template&) = default;
};

inline constexpr int kMaxMinutiae = 100;

/// False for a picture without pixels, with more than 64 megapixels, or with a side that minutiae
/// can't tell places on.
inline bool saf_picture_size_allowed(double width, double height) {
  constexpr double kMaxPixels = 64e6;
  constexpr double kMaxSide = INT16_MAX;
  return width >= 1 && height >= 1 && width <= kMaxSide && height <= kMaxSide && width * height <= kMaxPixels;
}

}  // namespace vorc
