#pragma once

#include <cstddef>
#include <type_traits>
#include <vector>

#include "base/arena.h"

namespace vorc {

/// A vector whose elements lie in an arena and never move: growing costs the same however many there are.
template <typename T>
class SteadyVector {
  static_assert(std::is_trivially_destructible_v<T>);

 public:
  /// The arena must outlive the vector, and may hold other things.
  explicit SteadyVector(Arena& arena) : arena_(arena) {}

  size_t size() const { return size_; }
  T& operator[](size_t i) { return blocks_[i / kBlock][i % kBlock]; }
  const T& operator[](size_t i) const { return blocks_[i / kBlock][i % kBlock]; }
  void Add(const T& value) {
    if (size_ % kBlock == 0)
      blocks_.push_back(static_cast<T*>(arena_.Allocate(kBlock * sizeof(T), alignof(T))));
    new (&blocks_.back()[size_ % kBlock]) T(value);
    ++size_;
  }

 private:
  static constexpr size_t kBlock = 32;

  Arena& arena_;
  std::vector<T*> blocks_;
  size_t size_ = 0;
};

}  // namespace vorc
