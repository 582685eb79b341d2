#include "base/host_stack.h"

#include <pthread.h>

#include <algorithm>
#include <cstddef>

namespace vorc {

namespace {

// Deep recursion should end with a message before it costs a host its memory.
constexpr size_t kMostUsed = size_t{150} << 20;

const char* LowestAddress() {
  pthread_attr_t attributes;
  if (pthread_getattr_np(pthread_self(), &attributes) != 0) return nullptr;
  void* start = nullptr;
  size_t size = 0;
  pthread_attr_getstack(&attributes, &start, &size);
  pthread_attr_destroy(&attributes);
  const size_t usable = std::min(size / 4 * 3, kMostUsed);
  return static_cast<const char*>(start) + (size - usable);
}

thread_local const char* lowest = nullptr;

}  // namespace

void UseHostStack(const char* start, size_t size) {
  lowest = start + (size - std::min(size / 4 * 3, kMostUsed));
}

bool HostStackLow() {
  if (lowest == nullptr) lowest = LowestAddress();
  return static_cast<const char*>(__builtin_frame_address(0)) < lowest;
}

}  // namespace vorc
