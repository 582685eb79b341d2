#pragma once

#include <cstdio>
#include <cstdlib>

namespace vorc {

/// A line on standard error, if the environment asks for it (SAF_DIAG). Out at once, so that it is
/// seen before whatever comes next.
template <typename... Args>
void saf_diagnose(const char* format, Args... args) {
  if (std::getenv("SAF_DIAG") == nullptr) return;
  std::fprintf(stderr, format, args...);
  std::fflush(stderr);
}

inline void saf_diagnose(const char* text) {
  saf_diagnose("%s", text);
}

}  // namespace vorc
