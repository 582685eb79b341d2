#pragma once

#include <sys/types.h>

#include <cstddef>

namespace vorc {

/// A process group of children that must not outlive this process: when it is interrupted, told to end
/// or loses its terminal, the group is killed first.
class ChildGroup {
 public:
  ChildGroup() = default;
  ~ChildGroup() { Release(); }
  ChildGroup(const ChildGroup&) = delete;
  ChildGroup& operator=(const ChildGroup&) = delete;

  /// Watches over a group. Beyond some thousands at a time none is.
  void Watch(pid_t group);
  /// To be called once the group's first process has been waited for: its number may name another then.
  void Release();

 private:
  size_t place_ = 0;
  bool watched_ = false;
};

}  // namespace vorc
