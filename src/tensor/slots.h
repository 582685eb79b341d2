#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "tensor/tensor.h"

namespace vorc {

/// The tensors that a script holds by number, 1 to 4095. A training run makes and frees many
/// thousands, so, other than with other handles, a freed number is given out again: always the
/// lowest.
class MorvTensorSlots {
 public:
  static constexpr size_t kCount = 4096;

  /// Takes over a tensor and answers its number; 0 for null or with all numbers in use.
  int32_t Add(TensorPtr tensor) {
    while (first_free_ < kCount && slots_[first_free_]) ++first_free_;
    if (!tensor || first_free_ == kCount) return 0;
    slots_[first_free_] = std::move(tensor);
    return static_cast<int32_t>(first_free_);
  }

  /// Null for a number that stands for nothing.
  MorvTensorRec* Find(int64_t handle) const {
    if (handle < 1 || handle >= static_cast<int64_t>(kCount)) return nullptr;
    return slots_[static_cast<size_t>(handle)].get();
  }

  void Free(int64_t handle) {
    if (Find(handle) == nullptr) return;
    const auto index = static_cast<size_t>(handle);
    slots_[index].reset();
    if (index < first_free_) first_free_ = index;
  }

 private:
  std::array<TensorPtr, kCount> slots_{};
  size_t first_free_ = 1;  ///< every slot below is taken
};

}  // namespace vorc
