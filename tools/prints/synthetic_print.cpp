#include "prints/synthetic_print.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>

namespace vorc::synthetic {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kRidgePeriod = 9;
constexpr int kKernelRadius = 7;
constexpr int kKernelSize = 2 * kKernelRadius + 1;
constexpr int kOrientations = 32;
constexpr int kGrowthSteps = 7;

using Point = std::complex<double>;
using Kernel = std::array<double, kKernelSize * kKernelSize>;

/// The points around which ridges turn, and those where three flows meet, in shares of the finger.
struct Flow {
  std::vector<Point> cores;
  std::vector<Point> deltas;
  double arch = 0;
};

Flow MakeFlow(Random& random) {
  const auto near = [&](double x, double y) {
    // In braces, so that the two are drawn in this order.
    return Point{x + random.Between(-0.05, 0.05), y + random.Between(-0.05, 0.05)};
  };
  const double side = random.Between(0, 1) < 0.5 ? -1 : 1;
  switch (static_cast<int>(random.Between(0, 4))) {
    case 0: return {{}, {}, random.Between(0.5, 1)};
    case 1: return {{near(0.04 * side, 0.1)}, {near(-0.3 * side, -0.3)}, 0};
    case 2: return {{near(0, 0.16), near(0, -0.06)}, {near(-0.38, -0.35), near(0.38, -0.35)}, 0};
    default: return {{near(0.1, 0.2), near(-0.1, -0.1)}, {near(-0.4, -0.3), near(0.4, -0.38)}, 0};
  }
}

/// Direction of the ridges at a point, from the left half circle of the flow's turning points.
double FlowAngle(const Flow& flow, Point point) {
  double angle = flow.arch * std::sin(2 * kPi * std::clamp(point.real(), -0.5, 0.5)) *
                 -std::clamp(0.5 - std::abs(point.imag() + 0.1), 0.0, 0.5) * 2;
  for (const Point core : flow.cores) angle += std::arg(point - core) / 2;
  for (const Point delta : flow.deltas) angle -= std::arg(point - delta) / 2;
  return -angle;
}

Kernel MakeKernel(double angle) {
  constexpr double kSigma = 3.5;
  Kernel kernel;
  double sum = 0, weights = 0;
  const auto weight = [](int x, int y) { return std::exp(-(x * x + y * y) / (2 * kSigma * kSigma)); };
  for (int y = -kKernelRadius, i = 0; y <= kKernelRadius; ++y) {
    for (int x = -kKernelRadius; x <= kKernelRadius; ++x, ++i) {
      const double across = y * std::cos(angle) - x * std::sin(angle);
      kernel[static_cast<size_t>(i)] = weight(x, y) * std::cos(2 * kPi / kRidgePeriod * across);
      sum += kernel[static_cast<size_t>(i)];
      weights += weight(x, y);
    }
  }
  for (int y = -kKernelRadius, i = 0; y <= kKernelRadius; ++y) {
    for (int x = -kKernelRadius; x <= kKernelRadius; ++x, ++i) {
      kernel[static_cast<size_t>(i)] -= sum * weight(x, y) / weights;
    }
  }
  return kernel;
}

/// One step of growth: each pixel takes on what a ridge along the flow would have in its place.
std::vector<double> Grow(const Finger& finger, const std::vector<Kernel>& kernels,
                         const std::vector<uint8_t>& orientations) {
  std::vector<double> grown(finger.relief.size());
  for (int y = kKernelRadius; y < finger.height - kKernelRadius; ++y) {
    for (int x = kKernelRadius; x < finger.width - kKernelRadius; ++x) {
      const size_t place = static_cast<size_t>(y * finger.width + x);
      const double* weights = kernels[orientations[place]].data();
      std::array<double, kKernelSize> columns{};
      for (int j = -kKernelRadius; j <= kKernelRadius; ++j, weights += kKernelSize) {
        const double* row = &finger.relief[static_cast<size_t>((y + j) * finger.width + x - kKernelRadius)];
        for (size_t i = 0; i < kKernelSize; ++i) columns[i] += weights[i] * row[i];
      }
      double sum = 0;
      for (const double column : columns) sum += column;
      grown[place] = std::tanh(sum);
    }
  }
  return grown;
}

/// A value between the four pixels around a place; 0 outside.
double Sample(const Finger& finger, double x, double y) {
  const int left = static_cast<int>(std::floor(x));
  const int top = static_cast<int>(std::floor(y));
  if (left < 0 || top < 0 || left + 1 >= finger.width || top + 1 >= finger.height) return 0;
  const double* row = &finger.relief[static_cast<size_t>(top * finger.width + left)];
  const double* below = row + finger.width;
  const double across = x - left;
  const double upper = row[0] + across * (row[1] - row[0]);
  const double lower = below[0] + across * (below[1] - below[0]);
  return upper + (y - top) * (lower - upper);
}

/// A straight white line.
struct Cut {
  double x, y, angle, half_length;

  bool Covers(double px, double py) const {
    const double along = (px - x) * std::cos(angle) + (py - y) * std::sin(angle);
    const double across = (py - y) * std::cos(angle) - (px - x) * std::sin(angle);
    return std::abs(along) < half_length && std::abs(across) < 1.5;
  }
};

/// Noise that changes slowly from place to place: dry and wet spots of skin.
class Blotches {
 public:
  Blotches(Random& random, int width, int height) : columns_(width / kCell + 2) {
    cells_.resize(static_cast<size_t>(columns_ * (height / kCell + 2)));
    for (double& cell : cells_) cell = random.Between(-1, 1);
  }

  double At(int x, int y) const {
    const double across = static_cast<double>(x % kCell) / kCell;
    const double down = static_cast<double>(y % kCell) / kCell;
    const double* row = &cells_[static_cast<size_t>(y / kCell * columns_ + x / kCell)];
    const double upper = row[0] + across * (row[1] - row[0]);
    const double lower = row[columns_] + across * (row[columns_ + 1] - row[columns_]);
    return upper + down * (lower - upper);
  }

 private:
  static constexpr int kCell = 24;
  int columns_;
  std::vector<double> cells_;
};

/// How much of the finger touches the glass at a place in the finger's own pixels: 1, 0, or between.
double Contact(const Finger& finger, const Impression& impression, double x, double y) {
  const double half_width = 0.47 * finger.width;
  const double half_height = 0.47 * finger.height;
  const double across = (x / finger.width - 0.5) * finger.width / half_width;
  const double down = (y / finger.height - 0.5) * finger.height / half_height;
  const double from_centre = std::hypot(across, down);
  const double from_part =
      std::hypot(across - impression.visible_x, down - impression.visible_y) / impression.visible;
  return std::clamp((1 - std::max(from_centre, from_part)) * 12, 0.0, 1.0);
}

}  // namespace

double Random::Between(double low, double high) {
  state_ += 0x9e3779b97f4a7c15;
  uint64_t mixed = state_;
  mixed = (mixed ^ mixed >> 30) * 0xbf58476d1ce4e5b9;
  mixed = (mixed ^ mixed >> 27) * 0x94d049bb133111eb;
  mixed ^= mixed >> 31;
  return low + static_cast<double>(mixed >> 11) * 0x1p-53 * (high - low);
}

Finger GrowFinger(uint64_t seed, int width, int height) {
  Random random(seed);
  const Flow flow = MakeFlow(random);
  std::vector<Kernel> kernels;
  for (int i = 0; i < kOrientations; ++i) kernels.push_back(MakeKernel(i * kPi / kOrientations));
  Finger finger{width, height, {}};
  std::vector<uint8_t> orientations;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const Point point(static_cast<double>(x) / width - 0.5, 0.5 - static_cast<double>(y) / height);
      const double turns = FlowAngle(flow, point) / kPi;
      const int bucket = static_cast<int>((turns - std::floor(turns)) * kOrientations + 0.5);
      orientations.push_back(static_cast<uint8_t>(bucket % kOrientations));
      finger.relief.push_back(random.Between(-0.5, 0.5));
    }
  }
  for (int step = 0; step < kGrowthSteps; ++step) finger.relief = Grow(finger, kernels, orientations);
  return finger;
}

Impression RandomImpression(Random& random) {
  Impression impression;
  impression.turn = random.Between(-0.35, 0.35);
  impression.shift_x = random.Between(-15, 15);
  impression.shift_y = random.Between(-15, 15);
  impression.pressure = random.Between(-0.3, 0.3);
  impression.noise = random.Between(0.1, 0.35);
  impression.stretch = random.Between(-3, 3);
  impression.cuts = static_cast<int>(random.Between(0, 4));
  impression.visible = random.Between(0.8, 1.1);
  impression.visible_x = random.Between(-0.2, 0.2);
  impression.visible_y = random.Between(-0.2, 0.2);
  return impression;
}

GrayPicture Scan(const Finger& finger, const Impression& impression, uint64_t seed, int margin) {
  Random random(seed);
  GrayPicture picture{finger.width + 2 * margin, finger.height + 2 * margin, {}};
  const Blotches blotches(random, picture.width, picture.height);
  std::vector<Cut> cuts;
  for (int i = 0; i < impression.cuts; ++i) {
    cuts.push_back({random.Between(0.2, 0.8) * picture.width, random.Between(0.2, 0.8) * picture.height,
                    random.Between(0, kPi), random.Between(20, 70)});
  }
  const double cosine = std::cos(impression.turn);
  const double sine = std::sin(impression.turn);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const double across = x - picture.width / 2.0 - impression.shift_x;
      const double down = y - picture.height / 2.0 - impression.shift_y;
      const double pull = impression.stretch * std::sin(down / 60) * std::cos(across / 70);
      const double skin_x = cosine * across + sine * down + finger.width / 2.0 + pull;
      const double skin_y = cosine * down - sine * across + finger.height / 2.0 - pull / 2;
      const double contact = Contact(finger, impression, skin_x, skin_y);
      double ink = 0;
      if (contact > 0) {
        const double height = Sample(finger, skin_x, skin_y) + impression.pressure +
                              impression.noise * (blotches.At(x, y) + random.Between(-1, 1));
        ink = contact * (0.5 + 0.5 * std::tanh(2.5 * height));
      }
      for (const Cut& cut : cuts) {
        if (cut.Covers(x, y)) ink *= 0.1;
      }
      const double grey = 235 - 190 * ink + 12 * impression.noise * random.Between(-1, 1);
      picture.pixels.push_back(static_cast<uint8_t>(std::clamp(grey, 0.0, 255.0)));
    }
  }
  return picture;
}

std::string ToPgm(const GrayPicture& picture) {
  return "P5 " + std::to_string(picture.width) + " " + std::to_string(picture.height) + " 255\n" +
         std::string(picture.pixels.begin(), picture.pixels.end());
}

}  // namespace vorc::synthetic
