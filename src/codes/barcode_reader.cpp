#include "codes/barcode_reader.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <span>
#include <vector>

#include "base/picture.h"
#include "codes/barcode_runs.h"
#include "codes/geometry.h"

namespace vorc::codes {

namespace {

constexpr int kMinSide = 8;
constexpr int kMaxGridSide = 4000;
constexpr double kAngles[] = {0, 90, 15, -15, 30, -30, 105, 75, 120, 60};
constexpr double kPositions[] = {0.5, 0.4, 0.6, 0.3, 0.7, 0.2, 0.8, 0.1, 0.9};
constexpr size_t kMinSamples = 40;
constexpr size_t kEanRuns = 59;

// How a line is turned into dark and light: smoothing passes, and how far the threshold lies off the
// middle of the neighbourhood's extremes, in sixteenths of their distance. In ascending order of
// smoothing; more variants than these read no more, by measurement.
struct Variant {
  int smoothing;
  int offset;
};
constexpr Variant kVariants[] = {{0, 0}, {1, 0}, {2, 0}, {2, -2}, {2, 2}, {3, 0}};

using Samples = std::vector<uint8_t>;

// A picture seen through a grid of every k-th pixel.
class Grid {
 public:
  explicit Grid(const GrayPicture& picture) : picture_(picture) {
    while (picture.width / step_ > kMaxGridSide || picture.height / step_ > kMaxGridSide) ++step_;
    width_ = picture.width / step_;
    height_ = picture.height / step_;
  }

  double width() const { return width_; }
  double height() const { return height_; }
  bool Inside(Point at) const { return at.x >= 0 && at.y >= 0 && at.x < width_ && at.y < height_; }
  int Level(Point at) const {
    const auto x = static_cast<size_t>(at.x) * static_cast<size_t>(step_);
    const auto y = static_cast<size_t>(at.y) * static_cast<size_t>(step_);
    return picture_.pixels[y * static_cast<size_t>(picture_.width) + x];
  }

 private:
  const GrayPicture& picture_;
  int step_ = 1;
  int width_ = 0;
  int height_ = 0;
};

struct Line {
  Point start;
  Point way;  // of length 1
  int length;
};

Line LineAt(const Grid& grid, double angle, double position) {
  const double radians = angle * std::numbers::pi / 180;
  const Point way{std::cos(radians), std::sin(radians)};
  const Point across{-way.y, way.x};
  const double half_extent = (std::abs(grid.width() * across.x) + std::abs(grid.height() * across.y)) / 2;
  const double half_length = std::hypot(grid.width(), grid.height()) / 2;
  const Point centre{grid.width() / 2, grid.height() / 2};
  const Point middle = centre + across * ((position - 0.5) * 2 * half_extent);
  return {middle - way * half_length, way, static_cast<int>(2 * half_length)};
}

// Grey levels along a line as far as it lies in the picture; of three pixels across it if `wide`.
void SampleLine(const Grid& grid, const Line& line, bool wide, Samples& samples) {
  samples.clear();
  const Point across{-line.way.y, line.way.x};
  for (int i = 0; i <= line.length; ++i) {
    const Point at = line.start + line.way * i;
    if (!grid.Inside(at)) continue;
    int level = grid.Level(at);
    if (wide) {
      const Point left = at - across, right = at + across;
      level +=
          (grid.Inside(left) ? grid.Level(left) : level) + (grid.Inside(right) ? grid.Level(right) : level);
      level /= 3;
    }
    samples.push_back(static_cast<uint8_t>(level));
  }
}

void Smooth(Samples& samples) {
  int left = samples.front();
  for (size_t i = 0; i < samples.size(); ++i) {
    const int centre = samples[i];
    const int right = samples[std::min(i + 1, samples.size() - 1)];
    samples[i] = static_cast<uint8_t>((left + 2 * centre + right) / 4);
    left = centre;
  }
}

// For each sample the extreme of the window of `width` around it, by prefixes and suffixes of blocks
// that are as long as the window.
template <typename Pick>
void WindowExtremes(const Samples& samples, size_t width, Pick pick, Samples& extremes) {
  const size_t count = samples.size(), before = width / 2;
  Samples prefix(count), suffix(count);
  for (size_t i = 0; i < count; ++i)
    prefix[i] = i % width == 0 ? samples[i] : pick(prefix[i - 1], samples[i]);
  for (size_t i = count; i-- > 0;)
    suffix[i] = i + 1 == count || (i + 1) % width == 0 ? samples[i] : pick(suffix[i + 1], samples[i]);
  extremes.resize(count);
  for (size_t i = 0; i < count; ++i) {
    const size_t first = i > before ? i - before : 0;
    const size_t last = std::min(i - std::min(i, before) + width - 1, count - 1);
    extremes[i] = first / width == last / width && first % width == 0 ? prefix[last]
                                                                      : pick(suffix[first], prefix[last]);
  }
}

class LineReader {
 public:
  // Tries one binarisation of a line after the other.
  std::optional<Barcode> try_line(Samples& samples) {
    int smoothed = 0;
    FindExtremes(samples);
    for (const Variant& variant : kVariants) {
      if (smoothed < variant.smoothing) {
        for (; smoothed < variant.smoothing; ++smoothed) Smooth(samples);
        FindExtremes(samples);
      }
      MakeRuns(samples, variant.offset);
      if (auto barcode = ReadRuns(runs_)) return barcode;
      Reverse();
      if (auto barcode = ReadRuns(runs_)) return barcode;
    }
    return std::nullopt;
  }

 private:
  void FindExtremes(const Samples& samples) {
    const size_t width = std::max<size_t>(8, samples.size() / 16);
    WindowExtremes(
        samples, width, [](uint8_t a, uint8_t b) { return std::min(a, b); }, least_);
    WindowExtremes(
        samples, width, [](uint8_t a, uint8_t b) { return std::max(a, b); }, greatest_);
  }

  // Runs alternate between dark and light; a dark run of length zero stands before a light margin.
  // They change where the line between the levels of two samples, each in its pixel's middle, crosses
  // the threshold.
  void MakeRuns(const Samples& samples, int offset) {
    runs_.assign(1, 0.0);
    bool dark = true;
    double start = 0;
    double before = 0;  // how far the sample before lies above its threshold
    for (size_t i = 0; i < samples.size(); ++i) {
      const int range = greatest_[i] - least_[i];
      const double threshold = (16 * (least_[i] + greatest_[i]) + 2 * offset * range) / 32.0;
      const double above = samples[i] - threshold;
      if ((above < 0) != dark) {
        const double change = i == 0 ? 0.0 : static_cast<double>(i) + 0.5 - above / (above - before);
        runs_.back() = change - start;
        runs_.push_back(0.0);
        start = change;
        dark = !dark;
      }
      before = above;
    }
    runs_.back() = static_cast<double>(samples.size()) - start;
  }

  void Reverse() {
    if (runs_.size() % 2 == 0) runs_.push_back(0.0);
    std::reverse(runs_.begin(), runs_.end());
  }

  static std::optional<Barcode> ReadRuns(std::span<const double> runs) {
    if (runs.size() > kEanRuns)
      for (size_t start = 0; start < runs.size(); start += 2)
        if (auto text = ean_at(runs, start)) return Barcode{std::move(*text), "ean13"};
    for (size_t start = 0; start < runs.size(); start += 2)
      if (auto text = code128_at(runs, start)) return Barcode{std::move(*text), "code128"};
    return std::nullopt;
  }

  Samples least_, greatest_;
  std::vector<double> runs_;
};

}  // namespace

std::optional<Barcode> MorvBarcodeRead(std::string_view file_bytes) {
  const auto picture = DecodeGrayPicture(file_bytes);
  if (!picture || picture->width < kMinSide || picture->height < kMinSide) return std::nullopt;
  const Grid grid(*picture);
  LineReader reader;
  Samples samples;
  for (const bool wide : {false, true}) {
    for (const double angle : kAngles) {
      for (const double position : kPositions) {
        SampleLine(grid, LineAt(grid, angle, position), wide, samples);
        if (samples.size() <= kMinSamples) continue;
        if (auto barcode = reader.try_line(samples)) return barcode;
      }
    }
  }
  return std::nullopt;
}

}  // namespace vorc::codes
