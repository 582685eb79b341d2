#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "base/console.h"
#include "base/format.h"

namespace vorc {

/// Objects that scripts hold by number. Handle 0 is failure; numbers start at 1, and a freed
/// number is never given out again, so a stale handle stays a bad handle for the whole run. The first
/// object that finds no number is told on standard error, if its type says what it is as `kKind`.
template <typename T>
class HandleTable {
 public:
  static constexpr int32_t kSlotCount = 4096;

  /// Takes over `object` and answers its number, or 0 once every number has been used.
  int32_t Add(std::unique_ptr<T> object) {
    if (next_ >= kSlotCount) return Refuse();
    slots_[static_cast<size_t>(next_)] = std::move(object);
    return next_++;
  }

  template <typename... Args>
  int32_t Create(Args&&... args) {
    return next_ >= kSlotCount ? Refuse() : Add(std::make_unique<T>(std::forward<Args>(args)...));
  }

  /// The object behind a number, or null for a bad, freed or never created one.
  T* Find(int32_t handle) const {
    if (handle < 1 || handle >= kSlotCount) return nullptr;
    return slots_[static_cast<size_t>(handle)].get();
  }

  /// Releases the object. False for a bad handle.
  bool Free(int32_t handle) {
    if (Find(handle) == nullptr) return false;
    slots_[static_cast<size_t>(handle)].reset();
    return true;
  }

 private:
  int32_t Refuse() {
    if constexpr (requires { T::kKind; }) {
      if (!std::exchange(refused_, true)) {
        WriteErrors(
            Format("morv: no number left for another %s - a run can make %d of them, freed ones included\n",
                   T::kKind, kSlotCount - 1));
      }
    }
    return 0;
  }

  std::array<std::unique_ptr<T>, kSlotCount> slots_{};
  int32_t next_ = 1;
  bool refused_ = false;
};

}  // namespace vorc
