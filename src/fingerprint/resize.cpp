#include "fingerprint/resize.h"

#include <cmath>
#include <utility>

#include "fingerprint/feature_template.h"

namespace vorc {

namespace {

constexpr double kStandardDpi = 500;

/// The part of an old row or column that a new one takes in: whole pixels, and how much of each.
struct Share {
  int index;
  double weight;
};

std::vector<Share> SharesOf(int place, int old_size, int new_size) {
  const double scale = static_cast<double>(old_size) / new_size;
  const double from = place * scale;
  const double to = from + scale;
  std::vector<Share> shares;
  for (int i = static_cast<int>(from); i < old_size && i < to; ++i) {
    const double covered = std::min<double>(i + 1, to) - std::max<double>(i, from);
    if (covered > 0) shares.push_back({i, covered / scale});
  }
  return shares;
}

saf_double_matrix ResizeRows(const saf_double_matrix& image, int new_width) {
  saf_double_matrix resized(new_width, image.height());
  for (int x = 0; x < new_width; ++x) {
    const std::vector<Share> shares = SharesOf(x, image.width(), new_width);
    for (int y = 0; y < image.height(); ++y) {
      double sum = 0;
      for (const Share& share : shares) sum += image.At(share.index, y) * share.weight;
      resized.At(x, y) = sum;
    }
  }
  return resized;
}

saf_double_matrix ResizeColumns(const saf_double_matrix& image, int new_height) {
  saf_double_matrix resized(image.width(), new_height);
  for (int y = 0; y < new_height; ++y) {
    for (const Share& share : SharesOf(y, image.height(), new_height)) {
      const double* from = image.Row(share.index);
      double* to = resized.Row(y);
      for (int x = 0; x < image.width(); ++x) to[x] += from[x] * share.weight;
    }
  }
  return resized;
}

}  // namespace

std::optional<saf_double_matrix> saf_image_resize(saf_double_matrix image, double dpi) {
  if (!(dpi > 0)) return std::nullopt;
  const double width = std::floor(image.width() * kStandardDpi / dpi + 0.5);
  const double height = std::floor(image.height() * kStandardDpi / dpi + 0.5);
  if (!saf_picture_size_allowed(width, height)) return std::nullopt;
  if (width == image.width() && height == image.height()) return image;
  return ResizeColumns(ResizeRows(image, static_cast<int>(width)), static_cast<int>(height));
}

}  // namespace vorc
