#pragma once

#include <bit>
#include <vector>

#include "fingerprint/matrix.h"

namespace vorc {

/// A sequence of points that grows at both ends.
class saf_point_ring {
 public:
  int size() const { return size_; }

  const saf_int_point& operator[](int i) const { return cells_[Place(i)]; }

  void PushBack(saf_int_point point) {
    if (static_cast<size_t>(size_) == cells_.size()) Grow();
    cells_[Place(size_++)] = point;
  }

  void PushFront(saf_int_point point) {
    if (static_cast<size_t>(size_) == cells_.size()) Grow();
    start_ = Place(-1);
    cells_[start_] = point;
    ++size_;
  }

  void Clear() { *this = {}; }

 private:
  // The number of cells is a power of two, so that places wrap by a mask.
  size_t Place(int i) const { return (start_ + static_cast<size_t>(i)) & (cells_.size() - 1); }

  void Grow() {
    std::vector<saf_int_point> larger(std::bit_ceil(cells_.size() + 8));
    for (int i = 0; i < size_; ++i) larger[static_cast<size_t>(i)] = (*this)[i];
    cells_ = std::move(larger);
    start_ = 0;
  }

  std::vector<saf_int_point> cells_;
  size_t start_ = 0;
  int size_ = 0;
};

}  // namespace vorc
