#pragma once

#include <cstdint>

namespace vorc {

/// How a statement ended.
enum ExecStateValue : uint8_t { kNone = 0, kBreak = 1, kExit = 2, kReturn = 3, kContinue = 4 };

}  // namespace vorc
