#pragma once

#include <vector>

#include "fingerprint/matrix.h"

namespace vorc {

/// Points sorted into square cells, to find those near a place without looking at all.
class PointGrid {
 public:
  PointGrid(int width, int height, int cell_size)
      : cell_size_(cell_size), cells_(width / cell_size + 1, height / cell_size + 1) {}

  void Add(saf_int_point point, int index) { Cell(point).push_back({point, index}); }

  /// Calls `visit(index, squared distance)` for each point at most `radius` away from `centre`.
  template <typename Visit>
  void ForEachWithin(saf_int_point centre, int radius, Visit visit) const {
    const int64_t limit = int64_t{radius} * radius;
    const int right = std::min((centre.x + radius) / cell_size_, cells_.width() - 1);
    const int bottom = std::min((centre.y + radius) / cell_size_, cells_.height() - 1);
    for (int row = std::max(centre.y - radius, 0) / cell_size_; row <= bottom; ++row) {
      for (int column = std::max(centre.x - radius, 0) / cell_size_; column <= right; ++column) {
        for (const Entry& entry : cells_.At(column, row)) {
          const int64_t distance = SquaredLength(entry.point - centre);
          if (distance <= limit) visit(entry.index, distance);
        }
      }
    }
  }

 private:
  struct Entry {
    saf_int_point point;
    int index;
  };

  std::vector<Entry>& Cell(saf_int_point point) {
    return cells_.At(point.x / cell_size_, point.y / cell_size_);
  }

  int cell_size_;
  saf_matrix<std::vector<Entry>> cells_;
};

}  // namespace vorc
