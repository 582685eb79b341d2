#pragma once

#include <cstdint>
#include <string_view>

namespace vorc {

/// The checks of self-testing scripts. Each prints one PASS or FAIL line on standard output, counts
/// it, and answers 1 or 0.
int MorvAssert(int32_t cond, std::string_view label);
int MorvAssertEqInt(int32_t a, int32_t b, std::string_view label);
int MorvAssertEqStr(std::string_view a, std::string_view b, std::string_view label);

/// Prints how many checks there were so far and answers how many of them failed.
int MorvTestSummary();

/// Flushes both output streams and ends the process.
[[noreturn]] void MorvExit(int status);

}  // namespace vorc
