#include "lib/checks.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/console.h"
#include "base/format.h"

namespace vorc {

// Prints the line that fits the verdict: "PASS: label" or "FAIL: label", and what is known beyond.
int Checks::Report(bool passed, std::string_view label, const std::string& if_passed,
                   const std::string& if_failed) {
  ++(passed ? passed_ : failed_);
  std::string line = passed ? "PASS: " : "FAIL: ";
  line.append(label).append(passed ? if_passed : if_failed);
  SendOutput(line);
  return passed ? 1 : 0;
}

int Checks::MorvAssert(int32_t cond, std::string_view label) {
  return Report(cond != 0, label, "", "");
}

int Checks::MorvAssertEqInt(int32_t a, int32_t b, std::string_view label) {
  const std::string got = std::to_string(a);
  return Report(a == b, label, " (" + got + ")", " - got " + got + ", expected " + std::to_string(b));
}

int Checks::MorvAssertEqStr(std::string_view a, std::string_view b, std::string_view label) {
  std::string difference = " - got '";
  difference.append(a).append("', expected '").append(b).append("'");
  return Report(a == b, label, "", difference);
}

int Checks::MorvTestSummary() const {
  SendOutput(Format("=== %d checks: %d passed, %d failed ===", passed_ + failed_, passed_, failed_));
  return failed_;
}

void MorvExit(int status) {
  // All streams, the logs included: exit would not tell that one can't be written.
  if (std::fflush(nullptr) != 0) ReportLostOutput("a log", errno);
  std::exit(OutputStatus(status));
}

}  // namespace vorc
