#include "lib/sed.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <ctime>
#include <string>

#include "lib/regex_apply.h"
#include "scratch_folder.h"

namespace vorc {
namespace {

std::string Apply(std::string_view pattern, std::string_view text) {
  return MorvRegexApply(pattern, text, 4096);
}

TEST(RegexApplyTest, Forms) {
  const struct {
    const char *pattern, *text, *expected;
  } cases[] = {
      {"s/b/X/", "abb", "aXb"},    {"s/b/X", "abb", "aXb"},
      {"s/b/X/g", "abb", "aXb"},   {"s/b//", "abb", "ab"},
      {"s//X/", "ab", "Xab"},      {"s/q/X/", "ab", "ab"},
      {"s/(/X/", "ab(", "ab("},    {"s/(a)(x)?(b)/\\3\\2\\1\\0|\\n\\\\1&/", "ab", "ba|\\n\\\\1&"},
      {"s/a/\\", "ab", "\\b"},     {"s/a\\/b/X/", "a\\b", "bb"},
      {"m/b+/", "abbc", "bb"},     {"m/q/", "ab", ""},
      {"m/b/trailing", "ab", "b"}, {"b.", "abc", "bc"},
      {"b/c", "b/c", "b"},         {"s/b", "s/b", "s"},
      {"m/b", "mb", "m"},          {"", "ab", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(Apply(c.pattern, c.text), c.expected) << c.pattern;
}

TEST(RegexApplyTest, LimitsOfParts) {
  // The closing bracket falls to the cut; the set then ends with the pattern.
  const std::string set = "[" + std::string(510, 'a') + "b]";
  EXPECT_EQ(Apply("m/" + set + "/", "b"), "");
  EXPECT_EQ(Apply("m/" + set + "/", "a"), "a");
  EXPECT_EQ(Apply("[" + std::string(507, 'a') + "b]", "xb"), "b");
  EXPECT_EQ(Apply("[" + std::string(508, 'a') + "b]", "xb"), "");
  EXPECT_EQ(Apply("s/a/" + std::string(512, 'r') + "/", "aq").size(), 512u);
}

TEST(RegexApplyTest, ResultIsCut) {
  const std::string text(5000, 'a');
  EXPECT_EQ(Apply("a*", text), text.substr(0, 4095));
  EXPECT_EQ(Apply("s/q/X/", text), text.substr(0, 4095));
  EXPECT_EQ(Apply("s/^/XY/", text), "XY" + text.substr(0, 4093));
  EXPECT_EQ(Apply("s/$/XY/", text), text.substr(0, 4095));
  EXPECT_EQ(Apply("s/(.*)/\\1\\1\\1/", text).size(), 4095u);
}

TEST(SedTest, Commands) {
  const struct {
    const char *script, *text, *expected;
  } cases[] = {
      {"s/$/!/", "a\nb", "a!\nb!"},
      {"s#a#b#g", "aa\n\na\n", "bb\n\nb\n"},
      {" \ts/a/b/ ;g", "aa", "bb"},
      {"s/a/b/xg", "aa", "ba"},
      {"s/a/b/", "aa\naa", "ba\nba"},
      {"s/^a/b/g", "aaca", "bbca"},
      {"s/^$/-/", "a\n\nb\n", "a\n-\nb\n"},
      {"s/x*/-/g", "abc", "-a-b-c-"},
      {"s/x*/-/g", "axb\n", "-a--b-\n"},
      {"s/x*/-/", "abc", "-abc"},
      {"s/x/y/", "", ""},
      {"s/^/>/", "a\n", ">a\n"},
      {"s/(a)(b)?/[&\\1\\2\\&\\n\\t\\\\\\q]/", "a", "[aa&\n\t\\q]"},
      {"s/a\\/b/c\\/d/", "a/b", "c/d"},
      {"s|a\\|b|c|g", "ab|", "cc|"},
      {"s/a.b/c/", "a\nb", "a\nb"},
      {"s/b\nc/x/", "b\nc", "b\nc"},
      {"s/(/x/", "(", "("},
      {"sxaxbx", "a", "b"},
  };
  for (const auto& c : cases) EXPECT_EQ(MorvSed(c.text, c.script), c.expected) << c.script;
}

TEST(SedTest, UnreadableScriptsLeaveTheTextAlone) {
  for (const char* script : {"", "  ", "s", "S/a/b/", "s/a", "s/a/b", "s/a/b\\/", "s\\a\\b\\", "s\na\nb\n"}) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(MorvSed("a\nb", script), "a\nb") << script;
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ised: cannot parse '" + std::string(script) + "' - expected s/pattern/replacement/[g]\n");
  }
}

TEST(SedTest, RareMatchesInManyLines) {
  std::string text, expected;
  for (int i = 0; i < 20000; ++i) {
    text += i % 5000 == 77 ? "some error here\n" : "all is well\n";
    expected += i % 5000 == 77 ? "some trouble here\n" : "all is well\n";
  }
  EXPECT_EQ(MorvSed(text + "error", "s/(error|fault)/trouble/"), expected + "trouble");
}

// Each search would look at the whole line, only to take one byte of it.
TEST(SedTest, SearchesThatLookFarAheadStayLinear) {
  const std::clock_t begin = std::clock();
  const std::string line(60'000, 'x');
  EXPECT_EQ(MorvSed(line + "\nxxy\n", "s/x*y|x/z/g"), std::string(line.size(), 'z') + "\nz\n");
  EXPECT_EQ(MorvSed(line + "yx", "s/x*y|x/z/g"), "zz");
  EXPECT_EQ(MorvSed(line, "s/(x.*y)?/-/g").size(), 2 * line.size() + 1);
  EXPECT_LT(std::clock() - begin, 10 * CLOCKS_PER_SEC);
}

class SedFileTest : public ScratchFolder {
 protected:
  const std::string path_ = At("file");
};

TEST_F(SedFileTest, RewritesOnlyWhatChanges) {
  Put("file", std::string("a\0a\nb", 5));
  EXPECT_EQ(MorvSedFile(path_, "s/a/xy/g"), 1);
  EXPECT_EQ(Get(path_), std::string("xy\0xy\nb", 7));
  std::filesystem::permissions(path_, std::filesystem::perms::owner_read);
  const timespec old_times[2] = {{1000, 0}, {1000, 0}};
  utimensat(AT_FDCWD, path_.c_str(), old_times, 0);
  EXPECT_EQ(MorvSedFile(path_, "s/q/r/"), 0);
  EXPECT_EQ(MorvSedFile(path_, "s/b/b/"), 0);
  EXPECT_EQ(MorvSedFile(path_, "no command"), 0);
  struct stat info {};
  ASSERT_EQ(stat(path_.c_str(), &info), 0);
  EXPECT_EQ(info.st_mtime, 1000);
}

TEST_F(SedFileTest, UnusableFiles) {
  EXPECT_EQ(MorvSedFile(path_, "s/a/b/"), -1);
  EXPECT_EQ(MorvSedFile(folder_, "s/a/b/"), -1);
  EXPECT_EQ(MorvSedFile("", "s/a/b/"), -1);
}

}  // namespace
}  // namespace vorc
