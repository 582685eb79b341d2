#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace vorc {

/// An owned file descriptor, closed at the end of its scope.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.Release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() { Close(); }

  int get() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }

  int Release() { return std::exchange(number_, -1); }
  void Close() {
    if (number_ >= 0) close(Release());
  }

 private:
  int number_ = -1;
};

/// Repeats a system call for as long as a signal interrupts it.
template <typename Call>
auto RetryInterrupted(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

}  // namespace vorc
