#include "lib/versions.h"

#include <gtest/gtest.h>

#include "temp_folder.h"

namespace vorc {
namespace {

std::string FieldIn(const std::string& content, const std::string& name = "version") {
  const TempFolder folder;
  return MorvLibField(folder.Write("f", content), name);
}

TEST(MorvLibField, ReadsTheFirstFieldOfThatName) {
  const struct {
    const char* content;
    const char* value;
  } cases[] = {
      {"// a\n// @morv-version: 1.2.0;\n// @morv-version: 9;\n", "1.2.0"},
      {"@morv-version:1.2 beta \t\r\n", "1.2 beta"},
      {"@morv-version \t 3", "3"},
      {"@morv-version :3", ":3"},
      {"@morv-version: a; b;", "a"},
      {"@morv-version2: 2\n@morv-version: 1", "1"},
      {"@morv-version2: 2 @morv-version: 1", "1"},
      {"@morv-version", ""},
      {"@morv-version:\n1;", ""},
      {"@morv-versio: 1", ""},
      {"", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(FieldIn(c.content), c.value) << c.content;
}

TEST(MorvLibField, LooksAt200PiecesOf1023Bytes) {
  const std::string field = "@morv-version: 1;";
  EXPECT_EQ(FieldIn(std::string(199, '\n') + field), "1");
  EXPECT_EQ(FieldIn(std::string(200, '\n') + field), "");
  EXPECT_EQ(FieldIn(std::string(1023, ' ') + field), "1");
  EXPECT_EQ(FieldIn(std::string(1023 - 15, ' ') + field), "");
  EXPECT_EQ(FieldIn("@morv-" + std::string(121, 'n') + ": 1", std::string(500, 'n')), "1");
}

TEST(MorvLibField, IsEmptyWithoutAReadableFile) {
  EXPECT_EQ(MorvLibVersion("/nowhere/at/all"), "");
  EXPECT_EQ(MorvLibVersion("/"), "");
}

TEST(MorvVersionCmp, ComparesNumberByNumber) {
  const struct {
    const char* low;
    const char* high;
    int order;
  } cases[] = {
      {"1.2", "1.2.0", 0},
      {"1.9", "1.10", -1},
      {"1.0", "1.0.1", -1},
      {"v1.2-rc3", "release 01_2 3", 0},
      {"", "abc", 0},
      {"", "0.0.1", -1},
      {"1.2 beta", "1.2 alpha", 0},
      {"99999999999999999999999998", "99999999999999999999999999", -1},
      {"4294967296", "18446744073709551616", -1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MorvVersionCmp(c.low, c.high), c.order) << c.low << " " << c.high;
    EXPECT_EQ(MorvVersionCmp(c.high, c.low), -c.order) << c.high << " " << c.low;
  }
}

}  // namespace
}  // namespace vorc
