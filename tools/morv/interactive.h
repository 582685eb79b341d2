#pragma once

#include "driver/options.h"

namespace vorc {

/// Reads statements from the terminal and answers them, until the input ends. The answer is the exit
/// status.
int RunInteractive(const Options& options);

}  // namespace vorc
