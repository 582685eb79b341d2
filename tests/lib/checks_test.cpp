#include "lib/checks.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace vorc {
namespace {

TEST(Checks, ReportCountAndSumUp) {
  Checks checks;
  testing::internal::CaptureStdout();
  EXPECT_EQ(checks.MorvAssert(-7, "truth"), 1);
  EXPECT_EQ(checks.MorvAssert(0, "100%s"), 0);
  EXPECT_EQ(checks.MorvAssertEqInt(-4, -4, "same"), 1);
  EXPECT_EQ(checks.MorvAssertEqInt(1, 2, ""), 0);
  EXPECT_EQ(checks.MorvAssertEqStr("", {}, "empty"), 1);
  EXPECT_EQ(checks.MorvAssertEqStr("ab", "a", "texts"), 0);
  EXPECT_EQ(checks.MorvTestSummary(), 3);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "PASS: truth\n"
            "FAIL: 100%s\n"
            "PASS: same (-4)\n"
            "FAIL:  - got 1, expected 2\n"
            "PASS: empty\n"
            "FAIL: texts - got 'ab', expected 'a'\n"
            "=== 6 checks: 3 passed, 3 failed ===\n");
}

TEST(Checks, ExitFlushes) {
  EXPECT_EXIT(
      {
        std::setvbuf(stderr, nullptr, _IOFBF, 4096);
        std::fputs("last words", stderr);
        MorvExit(300);
      },
      testing::ExitedWithCode(300 & 255), "last words");
}

}  // namespace
}  // namespace vorc
