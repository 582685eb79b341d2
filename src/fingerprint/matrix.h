#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vorc {

struct saf_int_point {
  int x = 0;
  int y = 0;

  friend bool operator==(const saf_int_point&, const saf_int_point&) = default;
};

inline saf_int_point operator+(saf_int_point a, saf_int_point b) {
  return {a.x + b.x, a.y + b.y};
}

inline saf_int_point operator-(saf_int_point a, saf_int_point b) {
  return {a.x - b.x, a.y - b.y};
}

inline int64_t SquaredLength(saf_int_point point) {
  return int64_t{point.x} * point.x + int64_t{point.y} * point.y;
}

struct saf_double_point {
  double x = 0;
  double y = 0;
};

struct saf_int_rect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  int right() const { return x + width; }
  int bottom() const { return y + height; }
};

/// From `start` up to, not including, `end`.
struct saf_int_range {
  int start = 0;
  int end = 0;
};

/// A grid of values, row by row from the top.
template <typename T>
class saf_matrix {
 public:
  saf_matrix() = default;
  saf_matrix(int width, int height, T fill = T{})
      : width_(width),
        height_(height),
        cells_(static_cast<size_t>(width) * static_cast<size_t>(height), fill) {}

  int width() const { return width_; }
  int height() const { return height_; }
  bool Contains(saf_int_point p) const { return p.x >= 0 && p.y >= 0 && p.x < width_ && p.y < height_; }

  T* Row(int y) { return cells_.data() + Offset(0, y); }
  const T* Row(int y) const { return cells_.data() + Offset(0, y); }
  T& At(int x, int y) { return cells_[Offset(x, y)]; }
  const T& At(int x, int y) const { return cells_[Offset(x, y)]; }
  T& At(saf_int_point p) { return At(p.x, p.y); }
  const T& At(saf_int_point p) const { return At(p.x, p.y); }

  const std::vector<T>& cells() const { return cells_; }
  std::vector<T>& cells() { return cells_; }

 private:
  size_t Offset(int x, int y) const {
    return static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x);
  }

  int width_ = 0;
  int height_ = 0;
  std::vector<T> cells_;
};

using saf_double_matrix = saf_matrix<double>;
using saf_int_matrix = saf_matrix<int>;
using saf_boolean_matrix = saf_matrix<uint8_t>;
using saf_double_point_matrix = saf_matrix<saf_double_point>;

/// One histogram of `depth` bins for each cell of a grid.
class saf_histogram_cube {
 public:
  saf_histogram_cube(int width, int height, int depth)
      : width_(width),
        height_(height),
        depth_(depth),
        counts_(static_cast<size_t>(width) * static_cast<size_t>(height) * static_cast<size_t>(depth)) {}

  int width() const { return width_; }
  int height() const { return height_; }
  int depth() const { return depth_; }
  int* Bins(int x, int y) { return counts_.data() + Offset(x, y); }
  const int* Bins(int x, int y) const { return counts_.data() + Offset(x, y); }

 private:
  size_t Offset(int x, int y) const {
    const size_t cell = static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x);
    return cell * static_cast<size_t>(depth_);
  }

  int width_;
  int height_;
  int depth_;
  std::vector<int> counts_;
};

/// The bin nearest to `bin` that a histogram of `depth` bins has.
inline int saf_histogram_cube_constrain(int bin, int depth) {
  return std::clamp(bin, 0, depth - 1);
}

}  // namespace vorc
