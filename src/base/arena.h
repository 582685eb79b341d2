#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/reserved_memory.h"

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
    if (used_ > backed_) [[unlikely]]
      Back();
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
  static constexpr size_t kStretch = size_t{64} * 1024;  ///< of a large block, backed at a time

  void Grow(size_t size) {
    capacity_ = size > next_block_ ? size : next_block_;
    next_block_ = next_block_ < kLargestBlock / 2 ? next_block_ * 2 : kLargestBlock;
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(capacity_));
    used_ = 0;
    backed_ = capacity_ < 2 * kStretch ? capacity_ : 0;
  }

  void Back() {
    const size_t end = used_ + kStretch < capacity_ ? used_ + kStretch : capacity_;
    BackPages(blocks_.back().get() + backed_, end - backed_);
    backed_ = end;
  }

  std::vector<std::unique_ptr<char[]>> blocks_;
  size_t used_ = 0;
  size_t capacity_ = 0;
  size_t backed_ = 0;  ///< bytes of the last block that cost no further call
  size_t next_block_;
};

/// Lets a container of the standard library take its memory from an arena.
template <typename T>
class ArenaAllocator {
 public:
  using value_type = T;

  explicit ArenaAllocator(Arena& arena) : arena_(&arena) {}
  template <typename Other>
  explicit ArenaAllocator(const ArenaAllocator<Other>& other) : arena_(other.arena()) {}

  T* allocate(size_t count) { return static_cast<T*>(arena_->Allocate(count * sizeof(T), alignof(T))); }
  void deallocate(T*, size_t) {}
  Arena* arena() const { return arena_; }
  bool operator==(const ArenaAllocator&) const = default;

 private:
  Arena* arena_;
};

}  // namespace vorc
