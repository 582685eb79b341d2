#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace vorc {

/// Memory that is only given back as a whole. Blocks grow, so small runs stay small.
class Arena {
 public:
  explicit Arena(size_t first_block = kFirstBlock) : next_block_(first_block) {}

  /// `size` bytes aligned to `alignment`, a power of two of at most 16.
  void* Allocate(size_t size, size_t alignment = alignof(std::max_align_t)) {
    size_t start = (used_ + alignment - 1) & ~(alignment - 1);
    if (blocks_.empty() || start + size > capacity_) {
      Grow(size);
      start = 0;
    }
    used_ = start + size;
    return blocks_.back().get() + start;
  }

  /// An object that is never destroyed.
  template <typename T, typename... Values>
  T* New(Values&&... values) {
    static_assert(std::is_trivially_destructible_v<T>);
    return new (Allocate(sizeof(T), alignof(T))) T{std::forward<Values>(values)...};
  }

  /// A NUL-terminated copy of a text.
  char* Copy(std::string_view text) {
    char* copy = static_cast<char*>(Allocate(text.size() + 1, 1));
    if (!text.empty()) std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
  }

 private:
  static constexpr size_t kFirstBlock = size_t{16} * 1024;
  static constexpr size_t kLargestBlock = size_t{1024} * 1024;

  void Grow(size_t size) {
    capacity_ = size > next_block_ ? size : next_block_;
    next_block_ = next_block_ < kLargestBlock / 2 ? next_block_ * 2 : kLargestBlock;
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(capacity_));
    used_ = 0;
  }

  std::vector<std::unique_ptr<char[]>> blocks_;
  size_t used_ = 0;
  size_t capacity_ = 0;
  size_t next_block_;
};

}  // namespace vorc
