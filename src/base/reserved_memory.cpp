#include "base/reserved_memory.h"

#include <sys/mman.h>

#include <cstdint>
#include <new>

namespace vorc {

namespace {

constexpr size_t kLargePage = size_t{2} << 20;
constexpr size_t kPage = 4096;

char* Reserve(size_t size, void* wanted_address) {
  constexpr int kProtection = PROT_READ | PROT_WRITE;
  constexpr int kFlags = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
  void* memory = MAP_FAILED;
  if (wanted_address != nullptr) {
    memory = mmap(wanted_address, size, kProtection, kFlags | MAP_FIXED_NOREPLACE, -1, 0);
  }
  if (memory == MAP_FAILED) memory = mmap(nullptr, size, kProtection, kFlags, -1, 0);
  return memory == MAP_FAILED ? nullptr : static_cast<char*>(memory);
}

}  // namespace

ReservedMemory::ReservedMemory(std::initializer_list<size_t> sizes, void* wanted_address) {
  for (const size_t size : sizes) {
    data_ = Reserve(size, wanted_address);
    size_ = data_ == nullptr ? 0 : size;
    if (data_ != nullptr) return;
  }
}

ReservedMemory::~ReservedMemory() {
  if (data_ != nullptr) munmap(data_, size_);
}

LargePages::LargePages(size_t size) : reserved_((size + 2 * kLargePage - 1) / kLargePage * kLargePage) {
  if (reserved_.data() == nullptr) throw std::bad_alloc();
  const size_t before = -reinterpret_cast<uintptr_t>(reserved_.data()) % kLargePage;
  memory_ = std::span(reserved_.data() + before, reserved_.size() - kLargePage);
  UseLargePages(memory_.data(), memory_.size());
}

void UseLargePages(char* memory, size_t size) {
  const size_t before = -reinterpret_cast<uintptr_t>(memory) % kLargePage;
  if (size < before + kLargePage) return;
  madvise(memory + before, (size - before) / kLargePage * kLargePage, MADV_HUGEPAGE);
}

void BackPages(char* memory, size_t size) {
  const size_t before = reinterpret_cast<uintptr_t>(memory) % kPage;
  // A host that knows no such call backs them when they are written.
  madvise(memory - before, (size + before) / kPage * kPage, MADV_POPULATE_WRITE);
}

}  // namespace vorc
