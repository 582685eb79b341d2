#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorc {

/// The checks of a self-testing script. Each prints one PASS or FAIL line on standard output, counts
/// it, and answers 1 or 0.
class Checks {
 public:
  int MorvAssert(int32_t cond, std::string_view label);
  int MorvAssertEqInt(int32_t a, int32_t b, std::string_view label);
  int MorvAssertEqStr(std::string_view a, std::string_view b, std::string_view label);

  /// Prints how many checks there were so far and answers how many of them failed.
  int MorvTestSummary() const;

 private:
  int Report(bool passed, std::string_view label, const std::string& if_passed, const std::string& if_failed);

  int passed_ = 0;
  int failed_ = 0;
};

/// Flushes both output streams and ends the process, with 1 if the status is 0 and output was lost.
[[noreturn]] void MorvExit(int status);

}  // namespace vorc
