#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>

namespace vorc {

/// A stretch of address space. Pages read as zero and cost memory only once they are written.
class ReservedMemory {
 public:
  /// Reserves `size` bytes, at `wanted_address` if that is not null and free.
  explicit ReservedMemory(size_t size, void* wanted_address = nullptr)
      : ReservedMemory({size}, wanted_address) {}
  /// Reserves the first of several sizes that the host grants.
  explicit ReservedMemory(std::initializer_list<size_t> sizes, void* wanted_address = nullptr);
  ~ReservedMemory();
  ReservedMemory(const ReservedMemory&) = delete;
  ReservedMemory& operator=(const ReservedMemory&) = delete;

  /// The first byte, or null if the host refused.
  char* data() const { return data_; }
  size_t size() const { return size_; }

 private:
  char* data_ = nullptr;
  size_t size_ = 0;
};

/// Several stretches of one reservation, which costs the host as much as each would. Every piece begins on
/// a page of its own.
class ReservedPieces {
 public:
  /// What a piece of so many bytes takes of the whole.
  static constexpr size_t RoomFor(size_t bytes) { return (bytes + kPage - 1) / kPage * kPage; }

  explicit ReservedPieces(size_t bytes) : memory_(bytes) {}
  /// The first of several wholes that the host grants.
  explicit ReservedPieces(std::initializer_list<size_t> sizes) : memory_(sizes) {}
  /// The next piece, or null if the host refused the memory or the whole is used up.
  char* Take(size_t bytes) {
    const size_t start = used_;
    if (memory_.data() == nullptr || RoomFor(bytes) > memory_.size() - used_) return nullptr;
    used_ += RoomFor(bytes);
    return memory_.data() + start;
  }
  /// What no piece was taken of.
  std::span<char> Rest() const { return std::span(memory_.data(), memory_.size()).subspan(used_); }

 private:
  static constexpr size_t kPage = 4096;

  ReservedMemory memory_;
  size_t used_ = 0;
};

/// Memory of whole large pages, where the host has such.
class LargePages {
 public:
  /// At least `size` bytes. Throws std::bad_alloc if the host refuses.
  explicit LargePages(size_t size);
  std::span<char> memory() const { return memory_; }

 private:
  ReservedMemory reserved_;
  std::span<char> memory_;
};

/// Has the host back memory that is about to be written as a whole by large pages, which takes it much
/// less time. Worth while from some megabytes, and does nothing below.
void UseLargePages(char* memory, size_t size);

/// Has the host back memory that is about to be written in one go, and not page by page as it is touched.
void BackPages(char* memory, size_t size);

}  // namespace vorc
