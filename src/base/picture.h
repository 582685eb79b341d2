#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vorc {

/// A picture in 8-bit grey, row by row from the top left, 0 black.
struct GrayPicture {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> pixels;  ///< width * height
};

/// More than any camera takes; beyond it a header is taken for damage.
constexpr int64_t kMaxPicturePixels = 100'000'000;

/// The first picture in the bytes of a file: JPEG, PNG, GIF, BMP, TGA, PSD, HDR, PIC or PNM, of any
/// depth, palettes and alpha (which is passed over) included. Nothing if the bytes hold no whole
/// picture, or if the header tells of more than `max_pixels`, which is judged before any memory for
/// pixels is asked for.
std::optional<GrayPicture> DecodeGrayPicture(std::string_view bytes, int64_t max_pixels = kMaxPicturePixels);

}  // namespace vorc
