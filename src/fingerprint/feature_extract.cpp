#include "fingerprint/feature_extract.h"

#include <utility>

#include "base/picture.h"
#include "fingerprint/angles.h"
#include "fingerprint/binarize.h"
#include "fingerprint/block_map.h"
#include "fingerprint/diagnostics.h"
#include "fingerprint/equalize.h"
#include "fingerprint/histograms.h"
#include "fingerprint/minutiae.h"
#include "fingerprint/orientations.h"
#include "fingerprint/resize.h"
#include "fingerprint/segmentation.h"
#include "fingerprint/skeleton.h"
#include "fingerprint/smoothing.h"

namespace vorc {

namespace {

constexpr int kBlockSize = 15;

void Stage(const char* name) {
  saf_diagnose("[saf] stage: %s\n", name);
}

/// What the steps behind the binarization read.
struct Binarized {
  saf_boolean_matrix ridges;
  saf_boolean_matrix valleys;
  saf_boolean_matrix inner_mask;
};

Binarized Binarize(saf_double_matrix image, const saf_block_map& blocks) {
  Stage("histograms");
  const saf_histogram_cube histograms = saf_local_histograms_create(blocks, image);
  const saf_histogram_cube corner_histograms = saf_local_histograms_smooth(blocks, histograms);
  Stage("segmentation");
  const saf_boolean_matrix mask = saf_segmentation_mask(blocks, histograms);
  Stage("equalize");
  image = saf_image_equalize(blocks, image, corner_histograms, mask);
  Stage("orientations");
  const saf_double_matrix orientations =
      saf_block_orientations(saf_pixelwise_orientations(image, mask, blocks), mask, blocks);
  Stage("smoothing-parallel");
  const saf_double_matrix parallel = saf_oriented_smoothing_smooth(image, orientations, mask, blocks, 0,
                                                                   saf_oriented_smoothing_lines(32, 7, 1.59));
  image = {};
  Stage("smoothing-orthogonal");
  const saf_double_matrix orthogonal = saf_oriented_smoothing_smooth(
      parallel, orientations, mask, blocks, kPi, saf_oriented_smoothing_lines(11, 4, 1.11));
  Stage("binarize");
  Binarized result;
  result.ridges = saf_binarize(parallel, orthogonal, mask, blocks);
  Stage("pixelwise-mask");
  const saf_boolean_matrix pixel_mask = saf_segmentation_pixelwise(mask, blocks);
  Stage("cleanup");
  result.ridges = saf_binarized_cleanup(std::move(result.ridges), pixel_mask);
  result.valleys = saf_binarized_invert(result.ridges, pixel_mask);
  Stage("inner mask");
  result.inner_mask = saf_segmentation_inner(pixel_mask);
  return result;
}

std::vector<saf_minutia> FindMinutiae(const Binarized& binarized) {
  Stage("ridge-skeleton");
  const saf_skeleton ridges = saf_skeletons_create(binarized.ridges, kRidgeEnding);
  Stage("valley-skeleton");
  const saf_skeleton valleys = saf_skeletons_create(binarized.valleys, kValleyEnding);
  Stage("minutiae+filters");
  std::vector<saf_minutia> minutiae = saf_minutiae_collect_both(ridges, valleys);
  saf_inner_minutiae_filter(minutiae, binarized.inner_mask);
  saf_minutia_cloud_filter(minutiae);
  saf_top_minutiae_filter(minutiae);
  return minutiae;
}

}  // namespace

std::optional<saf_double_matrix> saf_image_load_grayscale(std::string_view bytes) {
  constexpr int64_t kMaxPixels = 64'000'000;
  const std::optional<GrayPicture> picture = DecodeGrayPicture(bytes, kMaxPixels);
  if (!picture || !saf_picture_size_allowed(picture->width, picture->height)) return std::nullopt;
  saf_double_matrix image(picture->width, picture->height);
  for (size_t i = 0; i < picture->pixels.size(); ++i) image.cells()[i] = 1 - picture->pixels[i] / 255.0;
  return image;
}

std::optional<saf_feature_template> saf_feature_extract(saf_double_matrix image, double dpi) {
  Stage("resize");
  std::optional<saf_double_matrix> resized = saf_image_resize(std::move(image), dpi);
  if (!resized) return std::nullopt;
  Stage("blockmap");
  const saf_block_map blocks = saf_block_map_create(resized->width(), resized->height(), kBlockSize);
  saf_feature_template features{blocks.width, blocks.height, {}};
  features.minutiae = FindMinutiae(Binarize(std::move(*resized), blocks));
  Stage("  extract done");
  return features;
}

}  // namespace vorc
