#pragma once

#include <cstddef>
#include <initializer_list>

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

/// Has the host back memory that is about to be written as a whole by large pages, which takes it much
/// less time. Worth while from some megabytes, and does nothing below.
void UseLargePages(char* memory, size_t size);

}  // namespace vorc
