#pragma once

#include <cstdio>
#include <cstdlib>

namespace vorc {

/// True if the environment asks for a trace of the run (VORC_DIAG_MORV). Read once.
inline bool TraceOn() {
  static const bool on = std::getenv("VORC_DIAG_MORV") != nullptr;
  return on;
}

}  // namespace vorc

/// A line of the trace on standard error; its arguments are only evaluated when it is on.
#define VORC_TRACE(...)                                       \
  do {                                                        \
    if (::vorc::TraceOn()) std::fprintf(stderr, __VA_ARGS__); \
  } while (false)
