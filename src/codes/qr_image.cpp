#include "codes/qr_image.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vorc::codes {

namespace {

constexpr int kMaxSide = 1200;
constexpr int kBlock = 16;
constexpr int kReach = 2;  // blocks around a block that share in its threshold
constexpr int kFlatContrast = 23;
constexpr int kDefaultThreshold = 128;
constexpr int kSmoothRadius = 1;
constexpr int kSharpenRadius = 4;
constexpr int kSharpenStrength = 2;

struct BlockLevels {
  int mean;
  int least;
  int greatest;
};

BlockLevels LevelsOf(const MorvQrImage& image, int left, int top) {
  const int right = std::min(left + kBlock, image.width);
  const int bottom = std::min(top + kBlock, image.height);
  unsigned sum = 0;
  uint8_t least = 255, greatest = 0;
  for (int y = top; y < bottom; ++y) {
    const uint8_t* row = &image.grey[image.At(left, y)];
    for (int x = 0; x < right - left; ++x) {
      sum += row[x];
      least = std::min(least, row[x]);
      greatest = std::max(greatest, row[x]);
    }
  }
  const auto count = static_cast<unsigned>((right - left) * (bottom - top));
  return {static_cast<int>(sum / count), least, greatest};
}

class BlockGrid {
 public:
  explicit BlockGrid(const MorvQrImage& image)
      : columns_((image.width + kBlock - 1) / kBlock), rows_((image.height + kBlock - 1) / kBlock) {
    blocks_.reserve(static_cast<size_t>(columns_) * static_cast<size_t>(rows_));
    for (int row = 0; row < rows_; ++row)
      for (int column = 0; column < columns_; ++column)
        blocks_.push_back(LevelsOf(image, column * kBlock, row * kBlock));
  }

  int columns() const { return columns_; }
  int rows() const { return rows_; }

  int Threshold(int column, int row, ThresholdRule rule, int otsu) const {
    int sum = 0, least = 255, greatest = 0;
    for (int dy = -kReach; dy <= kReach; ++dy) {
      for (int dx = -kReach; dx <= kReach; ++dx) {
        const BlockLevels& block = Clamped(column + dx, row + dy);
        sum += block.mean;
        least = std::min(least, block.least);
        greatest = std::max(greatest, block.greatest);
      }
    }
    constexpr int kNeighbours = (2 * kReach + 1) * (2 * kReach + 1);
    if (greatest - least <= kFlatContrast) return otsu;
    return rule.middle ? (least + greatest) / 2 : sum / kNeighbours - rule.bias;
  }

 private:
  const BlockLevels& Clamped(int column, int row) const {
    const auto x = static_cast<size_t>(std::clamp(column, 0, columns_ - 1));
    const auto y = static_cast<size_t>(std::clamp(row, 0, rows_ - 1));
    return blocks_[y * static_cast<size_t>(columns_) + x];
  }

  int columns_;
  int rows_;
  std::vector<BlockLevels> blocks_;
};

void BinariseBlock(MorvQrImage& image, int left, int top, int threshold) {
  const int width = std::min(kBlock, image.width - left);
  const int bottom = std::min(top + kBlock, image.height);
  for (int y = top; y < bottom; ++y) {
    const uint8_t* grey = &image.grey[image.At(left, y)];
    uint8_t* binary = &image.binary[image.At(left, y)];
    for (int x = 0; x < width; ++x) binary[x] = grey[x] < threshold ? 1 : 0;
  }
}

// Means of the squares that reach `radius` pixels around each pixel, as far as they lie in the picture.
std::vector<uint8_t> BoxMeans(const MorvQrImage& image, int radius) {
  const int width = image.width, height = image.height;
  std::vector<int> columns(static_cast<size_t>(width), 0);  // sums over the rows of the square
  const auto add_row = [&](int y, int sign) {
    if (y < 0 || y >= height) return;
    const uint8_t* row = &image.grey[image.At(0, y)];
    for (int x = 0; x < width; ++x) columns[static_cast<size_t>(x)] += sign * row[x];
  };
  const auto overlap = [radius](int at, int end) {
    return std::min(at + radius + 1, end) - std::max(at - radius, 0);
  };
  std::vector<uint8_t> means(image.grey.size());
  for (int y = 0; y < radius; ++y) add_row(y, 1);
  for (int y = 0; y < height; ++y) {
    add_row(y + radius, 1);
    add_row(y - radius - 1, -1);
    int sum = 0;
    for (int x = 0; x < std::min(radius, width); ++x) sum += columns[static_cast<size_t>(x)];
    for (int x = 0; x < width; ++x) {
      if (x + radius < width) sum += columns[static_cast<size_t>(x + radius)];
      if (x > radius) sum -= columns[static_cast<size_t>(x - radius - 1)];
      means[image.At(x, y)] = static_cast<uint8_t>(sum / (overlap(x, width) * overlap(y, height)));
    }
  }
  return means;
}

int ReductionFactor(const GrayPicture& picture) {
  int factor = 1;
  while (picture.width / factor > kMaxSide || picture.height / factor > kMaxSide) ++factor;
  return factor;
}

}  // namespace

MorvQrImage Reduce(GrayPicture picture) {
  const int factor = ReductionFactor(picture);
  MorvQrImage image;
  image.width = picture.width / factor;
  image.height = picture.height / factor;
  if (factor == 1) {
    image.grey = std::move(picture.pixels);
    return image;
  }
  image.grey.resize(image.At(0, image.height));
  std::vector<unsigned> sums(static_cast<size_t>(image.width));
  const auto area = static_cast<unsigned>(factor * factor);
  for (int y = 0; y < image.height; ++y) {
    std::fill(sums.begin(), sums.end(), 0U);
    for (int line = 0; line < factor; ++line) {
      const uint8_t* source =
          &picture.pixels[static_cast<size_t>(y * factor + line) * static_cast<size_t>(picture.width)];
      for (unsigned& sum : sums)
        for (int i = 0; i < factor; ++i) sum += *source++;
    }
    uint8_t* row = &image.grey[image.At(0, y)];
    for (const unsigned sum : sums) *row++ = static_cast<uint8_t>(sum / area);
  }
  return image;
}

int OtsuThreshold(const std::vector<uint8_t>& grey) {
  std::array<int64_t, 256> histogram{};
  for (const uint8_t level : grey) ++histogram[level];
  const auto total = static_cast<double>(grey.size());
  double whole_sum = 0;
  for (size_t i = 0; i < histogram.size(); ++i)
    whole_sum += static_cast<double>(i) * static_cast<double>(histogram[i]);

  double best = 0, below = 0, below_sum = 0;
  int first = kDefaultThreshold, last = kDefaultThreshold;
  for (int threshold = 1; threshold < 256; ++threshold) {
    const auto count = static_cast<double>(histogram[static_cast<size_t>(threshold - 1)]);
    below += count;
    below_sum += count * (threshold - 1);
    const double above = total - below;
    if (below == 0 || above == 0) continue;
    const double distance = below_sum / below - (whole_sum - below_sum) / above;
    const double variance = below * above * distance * distance;
    if (variance > best) {
      best = variance;
      first = last = threshold;
    } else if (variance == best && last == threshold - 1) {
      last = threshold;
    }
  }
  return (first + last) / 2;
}

std::vector<uint8_t> Smoothed(const MorvQrImage& image) {
  return BoxMeans(image, kSmoothRadius);
}

std::vector<uint8_t> Sharpened(const MorvQrImage& image) {
  std::vector<uint8_t> levels = BoxMeans(image, kSharpenRadius);
  for (size_t i = 0; i < levels.size(); ++i) {
    const int level = image.grey[i];
    levels[i] = static_cast<uint8_t>(std::clamp(level + kSharpenStrength * (level - levels[i]), 0, 255));
  }
  return levels;
}

void Binarise(MorvQrImage& image, ThresholdRule rule, int otsu) {
  image.binary.resize(image.grey.size());
  const BlockGrid blocks(image);
  for (int row = 0; row < blocks.rows(); ++row)
    for (int column = 0; column < blocks.columns(); ++column)
      BinariseBlock(image, column * kBlock, row * kBlock, blocks.Threshold(column, row, rule, otsu));
}

}  // namespace vorc::codes
