#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/reserved_memory.h"

namespace vorc {

/// The texts of a script. A text is given back when nothing that could be a pointer refers to it any
/// more: a sweep takes every eight bytes of the memory that it is shown as an address. All that the
/// heap knows of its texts lies outside of them, where no script can reach it.
class TextHeap {
 public:
  TextHeap();

  char* data() const { return memory_.data(); }
  size_t size() const { return size_; }

  /// Memory for a text of `size` bytes, NUL included. Null when all is used up.
  char* Allocate(size_t size) {
    const int size_class = ClassOf(size);
    since_sweep_ += size;
    return size_class < kClasses ? AllocateSmall(size_class) : AllocateLarge(size);
  }

  /// True once so much has gathered that a sweep pays.
  bool WantsSweep() const { return since_sweep_ >= threshold_; }
  void BeginSweep();
  /// Keeps all texts that some eight bytes between the two addresses point to or into.
  void KeepFrom(const void* begin, const void* end);
  void Keep(const void* address);
  /// Gives back all texts that were not kept. `scanned` is how many bytes of other memory a sweep reads.
  void EndSweep(size_t scanned);

 private:
  static constexpr size_t kPageSize = size_t{64} * 1024;
  static constexpr size_t kSmallest = 16;
  static constexpr int kClasses = 12;  ///< 16 bytes to 32 KiB
  static constexpr size_t kWords = kPageSize / kSmallest / 64;

  enum class Use : uint8_t { kFree, kSmall, kLarge, kLargeTail };
  /// One page: texts of one size, or a part of a large text.
  struct Page {
    Use use;
    uint8_t size_class;
    bool kept;       ///< the large text that starts here
    uint32_t pages;  ///< of the large text that starts here; of a tail, pages back to its start
    uint64_t used[kWords];
    uint64_t marked[kWords];
  };
  struct Run {
    size_t first;
    size_t count;
  };

  /// Slots of one word of a page that are handed out one by one.
  struct Slots {
    uint64_t free = 0;
    char* first = nullptr;
  };

  static constexpr size_t SizeOf(int size_class) { return kSmallest << size_class; }
  static int ClassOf(size_t size) {
    return size <= kSmallest ? 0 : static_cast<int>(std::bit_width((size - 1) / kSmallest));
  }
  char* PageStart(size_t page) const { return memory_.data() + page * kPageSize; }
  Page& At(size_t page) { return pages_[page]; }
  char* AllocateSmall(int size_class) {
    Slots& slots = slots_[size_class];
    if (slots.free == 0 && !FindSlots(size_class)) return nullptr;
    char* text = slots.first + static_cast<size_t>(std::countr_zero(slots.free)) * SizeOf(size_class);
    slots.free &= slots.free - 1;
    return text;
  }
  bool FindSlots(int size_class);
  bool TakeSlots(int size_class);
  char* AllocateLarge(size_t size);
  bool TakePages(size_t count, size_t* first);
  void Release(size_t first, size_t count);
  void SweepSmall(size_t page);
  void Scan();

  ReservedMemory memory_;
  size_t size_;  ///< of what texts lie in; what is known of them lies behind it
  Page* pages_;
  size_t page_count_;
  size_t next_page_ = 0;                  ///< behind the last page that was ever used
  std::vector<Run> free_runs_;            ///< pages that were used and are free again, ascending
  std::vector<size_t> partly_[kClasses];  ///< pages of a class with free slots, as the last sweep found them
  size_t current_[kClasses];
  size_t cursor_[kClasses];  ///< word of the current page from which to look for free slots
  Slots slots_[kClasses];
  std::vector<Run> to_scan_;  ///< kept texts that may hold addresses themselves: offset and size
  size_t since_sweep_ = 0;
  size_t threshold_;
  size_t live_ = 0;
};

}  // namespace vorc
