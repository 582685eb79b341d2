#include <gtest/gtest.h>

#include <bit>
#include <cmath>

#include "fingerprint/angles.h"
#include "fingerprint/binarize.h"
#include "fingerprint/equalize.h"
#include "fingerprint/feature_extract.h"
#include "fingerprint/histograms.h"
#include "fingerprint/orientations.h"
#include "fingerprint/resize.h"
#include "fingerprint/segmentation.h"
#include "fingerprint/smoothing.h"
#include "fingerprint/thinning.h"
#include "prints/synthetic_print.h"

namespace vorc {
namespace {

/// Waves of period 9 whose crests run along `angle`.
saf_double_matrix Stripes(int width, int height, double angle) {
  saf_double_matrix image(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      image.At(x, y) = 0.5 + 0.45 * std::sin((y * std::cos(angle) - x * std::sin(angle)) * 2 * kPi / 9);
    }
  }
  return image;
}

TEST(Resize, KeepsTheMeanAndTheDarkness) {
  const saf_double_matrix image = Stripes(60, 40, 0.3);
  const auto mean = [](const saf_double_matrix& matrix) {
    double sum = 0;
    for (const double cell : matrix.cells()) sum += cell;
    return sum / static_cast<double>(matrix.cells().size());
  };
  for (const auto& [dpi, width, height] : {std::tuple{1000, 30, 20}, {300, 100, 67}, {500, 60, 40}}) {
    const auto resized = saf_image_resize(image, dpi);
    ASSERT_TRUE(resized);
    EXPECT_EQ(resized->width(), width);
    EXPECT_EQ(resized->height(), height);
    EXPECT_NEAR(mean(*resized), mean(image), 1e-12);
  }
  for (const double dpi : {0.0, -500.0, std::nan(""), 1e-3, 1e6})
    EXPECT_FALSE(saf_image_resize(image, dpi)) << dpi;
}

template <typename T>
uint64_t Checksum(const std::vector<T>& values) {
  uint64_t sum = 0xcbf29ce484222325;
  const auto add = [&](uint64_t bits) { sum = (sum ^ bits) * 0x100000001b3; };
  for (const T& value : values) {
    if constexpr (std::is_same_v<T, double>) add(std::bit_cast<uint64_t>(value));
    if constexpr (std::is_same_v<T, uint8_t>) add(value);
    if constexpr (std::is_same_v<T, saf_double_point>) {
      add(std::bit_cast<uint64_t>(value.x));
      add(std::bit_cast<uint64_t>(value.y));
    }
  }
  return sum;
}

uint64_t Checksum(const std::vector<saf_minutia>& minutiae) {
  std::vector<double> values;
  for (const saf_minutia& m : minutiae)
    values.insert(values.end(), {m.x * 1e5 + m.y, m.direction, static_cast<double>(m.type)});
  return Checksum(values);
}

// To the last bit, with any compiler on any processor.
TEST(Stages, ComeOutAsEver) {
  const synthetic::Impression smudged{.turn = 0.2, .noise = 0.6, .cuts = 3};
  const GrayPicture picture = synthetic::Scan(synthetic::GrowFinger(5, 210, 230), smudged, 1, 20);
  const saf_double_matrix image = saf_image_load_grayscale(synthetic::ToPgm(picture)).value();
  const saf_block_map blocks = saf_block_map_create(image.width(), image.height(), 15);
  const auto histograms = saf_local_histograms_create(blocks, image);
  const auto mask = saf_segmentation_mask(blocks, histograms);
  const auto equalized =
      saf_image_equalize(blocks, image, saf_local_histograms_smooth(blocks, histograms), mask);
  const auto pixels = saf_pixelwise_orientations(equalized, mask, blocks);
  const auto orientations = saf_block_orientations(pixels, mask, blocks);
  const auto parallel = saf_oriented_smoothing_smooth(equalized, orientations, mask, blocks, 0,
                                                      saf_oriented_smoothing_lines(32, 7, 1.59));
  const auto orthogonal = saf_oriented_smoothing_smooth(parallel, orientations, mask, blocks, kPi,
                                                        saf_oriented_smoothing_lines(11, 4, 1.11));
  const auto binary = saf_binarize(parallel, orthogonal, mask, blocks);
  const auto clean = saf_binarized_cleanup(binary, saf_segmentation_pixelwise(mask, blocks));
  const struct {
    const char* stage;
    uint64_t sum;
    uint64_t expected;
  } stages[] = {
      {"image", Checksum(image.cells()), 0xff08769410b3c8cb},
      {"mask", Checksum(mask.cells()), 0x8622000abe5f1ddb},
      {"equalized", Checksum(equalized.cells()), 0xe59ec98e3f4eead3},
      {"pixels", Checksum(pixels.cells()), 0xe6469f9cfe455f96},
      {"orientations", Checksum(orientations.cells()), 0x258f304f8088a435},
      {"parallel", Checksum(parallel.cells()), 0x1fa7e34941583fe5},
      {"orthogonal", Checksum(orthogonal.cells()), 0xc8ebceb1bc47f5c3},
      {"binary", Checksum(binary.cells()), 0x7dc8a51ee166dec5},
      {"clean", Checksum(clean.cells()), 0xf4ecefef9e3e32c2},
      {"thinned", Checksum(saf_binary_thin(clean).cells()), 0xc14c70448e175ce0},
      {"minutiae", Checksum(saf_feature_extract(image, 500)->minutiae), 0xcd66bf5330174237},
  };
  for (const auto& stage : stages) EXPECT_EQ(stage.sum, stage.expected) << stage.stage;
}

}  // namespace
}  // namespace vorc
