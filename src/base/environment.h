#pragma once

#include <mutex>

namespace vorc {

/// Held while the environment changes, and while a process is forked: a child must never start
/// with an environment that is half rewritten.
inline std::mutex& EnvironmentLock() {
  static std::mutex& lock = *new std::mutex;
  return lock;
}

}  // namespace vorc
