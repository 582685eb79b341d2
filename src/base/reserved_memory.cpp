#include "base/reserved_memory.h"

#include <sys/mman.h>

namespace vorc {

ReservedMemory::ReservedMemory(size_t size, void* wanted_address) : size_(size) {
  constexpr int kProtection = PROT_READ | PROT_WRITE;
  constexpr int kFlags = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
  void* memory = MAP_FAILED;
  if (wanted_address != nullptr) {
    memory = mmap(wanted_address, size, kProtection, kFlags | MAP_FIXED_NOREPLACE, -1, 0);
  }
  if (memory == MAP_FAILED) memory = mmap(nullptr, size, kProtection, kFlags, -1, 0);
  if (memory == MAP_FAILED)
    size_ = 0;
  else
    data_ = static_cast<char*>(memory);
}

ReservedMemory::~ReservedMemory() {
  if (data_ != nullptr) munmap(data_, size_);
}

}  // namespace vorc
