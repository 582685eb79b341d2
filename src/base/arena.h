#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/reserved_memory.h"

namespace vorc {

/// Memory that is only given back as a whole. Blocks grow, so small runs stay small; from some hundred
/// kilobytes on they are stretches of large pages, which cost the host a fraction of as many small ones.
class Arena {
 public:
  explicit Arena(size_t first_block = kFirstBlock) : next_block_(first_block) {}

  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  /// `size` bytes aligned to `alignment`, a power of two of at most 16.
  void* Allocate(size_t size, size_t alignment = alignof(std::max_align_t)) {
    char* start = Aligned(alignment);
    if (Remaining(start, ready_) < size) [[unlikely]]
      start = MakeRoom(size, alignment);
    next_ = start + size;
    return start;
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
  static constexpr size_t kLargestBlock = size_t{256} * 1024;  ///< of small pages
  static constexpr size_t kStretch = size_t{64} * 1024;        ///< of a block, backed at a time

  char* Aligned(size_t alignment) const {
    return next_ + (-reinterpret_cast<uintptr_t>(next_) & (alignment - 1));
  }
  static size_t Remaining(const char* from, const char* to) {
    return from < to ? static_cast<size_t>(to - from) : 0;
  }

  [[gnu::noinline]] char* MakeRoom(size_t size, size_t alignment) {
    char* start = Aligned(alignment);
    if (Remaining(start, end_) < size) {
      Grow(size);
      start = next_;
    }
    if (Remaining(start, ready_) < size) {
      const size_t more = std::min(size + kStretch, Remaining(start, end_));
      BackPages(ready_, static_cast<size_t>(start + more - ready_));
      ready_ = start + more;
    }
    return start;
  }

  void Grow(size_t size) {
    const size_t capacity = std::max(size, next_block_);
    if (capacity > kLargestBlock) {
      const std::span<char> pages =
          large_blocks_.emplace_back(std::make_unique<LargePages>(capacity))->memory();
      next_ = ready_ = pages.data();
      end_ = next_ + pages.size();
      return;
    }
    next_block_ *= 2;
    next_ = blocks_.emplace_back(std::make_unique_for_overwrite<char[]>(capacity)).get();
    end_ = next_ + capacity;
    ready_ = capacity < 2 * kStretch ? end_ : next_;
  }

  alignas(std::max_align_t) static inline char nothing_;

  std::vector<std::unique_ptr<char[]>> blocks_;
  std::vector<std::unique_ptr<LargePages>> large_blocks_;
  char* next_ = &nothing_;
  char* ready_ = &nothing_;  ///< behind what costs no further call
  char* end_ = &nothing_;    ///< behind the last block
  size_t next_block_;
};

}  // namespace vorc
