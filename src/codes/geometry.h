#pragma once

#include <cmath>

namespace vorc::codes {

/// A place or a way in a picture, in pixels, y downward.
struct Point {
  double x = 0;
  double y = 0;

  friend Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
  friend Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
  friend Point operator*(Point a, double factor) { return {a.x * factor, a.y * factor}; }
};

inline double Dot(Point a, Point b) {
  return a.x * b.x + a.y * b.y;
}

inline double Cross(Point a, Point b) {
  return a.x * b.y - a.y * b.x;
}

inline double Length(Point a) {
  return std::sqrt(Dot(a, a));
}

}  // namespace vorc::codes
