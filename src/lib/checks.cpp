#include "lib/checks.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace vorc {

namespace {

int g_morv_assert_pass = 0;
int g_morv_assert_fail = 0;

// Prints the line that fits the verdict: "PASS: label" or "FAIL: label", and what is known beyond.
int Report(bool passed, std::string_view label, const std::string& if_passed, const std::string& if_failed) {
  ++(passed ? g_morv_assert_pass : g_morv_assert_fail);
  std::string line = passed ? "PASS: " : "FAIL: ";
  line.append(label).append(passed ? if_passed : if_failed).append("\n");
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fflush(stdout);
  return passed ? 1 : 0;
}

}  // namespace

int MorvAssert(int32_t cond, std::string_view label) {
  return Report(cond != 0, label, "", "");
}

int MorvAssertEqInt(int32_t a, int32_t b, std::string_view label) {
  const std::string got = std::to_string(a);
  return Report(a == b, label, " (" + got + ")", " - got " + got + ", expected " + std::to_string(b));
}

int MorvAssertEqStr(std::string_view a, std::string_view b, std::string_view label) {
  std::string difference = " - got '";
  difference.append(a).append("', expected '").append(b).append("'");
  return Report(a == b, label, "", difference);
}

int MorvTestSummary() {
  std::printf("=== %d checks: %d passed, %d failed ===\n", g_morv_assert_pass + g_morv_assert_fail,
              g_morv_assert_pass, g_morv_assert_fail);
  std::fflush(stdout);
  return g_morv_assert_fail;
}

void MorvExit(int status) {
  std::fflush(stdout);
  std::fflush(stderr);
  std::exit(status);
}

}  // namespace vorc
