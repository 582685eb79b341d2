#pragma once

#include "driver/options.h"

namespace vorc {

/// Exit statuses of the program.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1;

/// Compiles, or interprets, the source that the options name. Answers the exit status.
int RunCompilation(const Options& options);

}  // namespace vorc
