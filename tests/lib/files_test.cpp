#include "lib/files.h"

#include <sys/stat.h>

#include "lib/file_fingerprint.h"
#include "lib/file_replace.h"
#include "lib/file_rewrite.h"
#include "lib/globbing.h"
#include "scratch_folder.h"

namespace vorc {
namespace {

class Files : public ScratchFolder {};

// What a file of 4,096 bytes is told stands with the scripts.
TEST_F(Files, ReadRefusesWhatHasNoEnd) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(MorvFileRead("/dev/zero", 4096), "");
  EXPECT_NE(testing::internal::GetCapturedStderr(), "");
  testing::internal::CaptureStderr();
  EXPECT_EQ(MorvFileRead(folder_, 4096), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(Files, ContainsSeesMatchesAcrossWindows) {
  for (const size_t before : {0, 8180, 8185, 8190, 8191, 16370}) {
    Put("f", std::string(before, 'n') + "needle" + std::string(9000, 'n'));
    EXPECT_EQ(MorvFileContains(At("f"), "needle"), 1) << before;
    EXPECT_EQ(MorvFileContains(At("f"), "needlf"), 0) << before;
  }
  const std::string longest(4096, 'y');
  Put("f", std::string(5000, 'n') + longest);
  EXPECT_EQ(MorvFileContains(At("f"), longest), 1);
  EXPECT_EQ(MorvFileContains(At("f"), longest + "y"), -1);
  EXPECT_EQ(MorvFileContains(At("missing"), "x"), -1);
  EXPECT_EQ(MorvFileContains(At("missing"), ""), 1);
  EXPECT_EQ(MorvFileContains(folder_, "x"), -1);
}

TEST_F(Files, ANulHidesTheRestOfItsWindowOnly) {
  const std::string nul(1, '\0');
  EXPECT_EQ(MorvFileContains(Put("f", "one" + nul + "two"), "one"), 1);
  EXPECT_EQ(MorvFileContains(At("f"), "two"), 0);
  EXPECT_EQ(MorvFileContains(Put("f", std::string(8190, 'n') + nul + "two"), "two"), 1);
}

TEST_F(Files, DiffComparesWholeLinesWithoutTheirEnds) {
  const std::string line(10'000, 'x');
  struct Case {
    std::string a, b;
    int32_t expected;
  };
  const Case cases[] = {{"a\nb\n", "a\r\nb", 0}, {"", "", 0},           {"", "\n", 1},
                        {"a\n", "a\n\n", 2},     {"a\nb\n", "a\nc", 2}, {line + "1\n", line + "2\n", 1},
                        {line + "\n", line, 0},  {" a", "a", 1},        {std::string("a\0b", 3), "a", 1}};
  for (const Case& c : cases) {
    Put("a", c.a);
    Put("b", c.b);
    EXPECT_EQ(MorvFileDiff(At("a"), At("b")), c.expected) << c.a << '|' << c.b;
    EXPECT_EQ(MorvFileDiff(At("b"), At("a")), c.expected) << c.a << '|' << c.b;
  }
  EXPECT_EQ(MorvFileDiff(At("a"), At("missing")), -1);
  EXPECT_EQ(MorvFileDiff(At("a"), folder_), -1);
}

TEST_F(Files, LinesAreCountedAndFound) {
  EXPECT_EQ(MorvFileLines(Put("f", "a\n\nb\n")), 3);
  EXPECT_EQ(MorvFileLines(folder_), -1);
  Put("f", "one\r\n\n" + std::string(300'000, 'x') + "\nfour");
  EXPECT_EQ(MorvFileLine(At("f"), 1), "one");
  EXPECT_EQ(MorvFileLine(At("f"), 2), "");
  EXPECT_EQ(MorvFileLine(At("f"), 3).size(), 300'000u);
  EXPECT_EQ(MorvFileLine(At("f"), 4), "four");
}

TEST_F(Files, ReplaceTakesMatchesFromTheLeftAndKeepsTheMode) {
  const std::string path = Put("f", std::string("aaa\0a", 5) + std::string(600'000, 'a'));
  chmod(path.c_str(), 0640);
  EXPECT_EQ(MorvFileReplace(path, "aa", "bcd"), 300'001);
  EXPECT_EQ(Get(path).substr(0, 11), std::string("bcda\0bcdbcd", 11));
  EXPECT_EQ(Get(path).size(), 4u + 1 + 300'000 * 3 + 1);
  struct stat status;
  stat(path.c_str(), &status);
  EXPECT_EQ(status.st_mode & 07777, 0640u);
  EXPECT_FALSE(MorvFileExists(path + ".vztmp"));
}

TEST_F(Files, ReplaceWithoutAMatchTouchesNothing) {
  const std::string path = Put("f", "abc");
  std::filesystem::last_write_time(path,
                                   std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
  const auto time = std::filesystem::last_write_time(path);
  EXPECT_EQ(MorvFileReplace(path, "x", "y"), 0);
  EXPECT_EQ(MorvFileReplace(path, "", "y"), -1);
  EXPECT_EQ(std::filesystem::last_write_time(path), time);
  EXPECT_EQ(MorvFileReplace(At("missing"), "x", "y"), -1);
  EXPECT_EQ(MorvFileReplace(folder_, "x", "y"), -1);
  EXPECT_EQ(MorvFileReplace("/dev/zero", "x", "y"), -1);
}

TEST_F(Files, AFailedReplaceLeavesTheOldFileAndNoTemporary) {
  const std::string text(1000, 'a');
  const std::string path = Put("f", text);
  {
    const FileSizeLimit full_disk(5000);
    EXPECT_EQ(MorvFileReplace(path, "a", "0123456789"), -1);
  }
  EXPECT_EQ(Get(path), text);
  EXPECT_FALSE(MorvFileExists(path + ".vztmp"));
  MorvMkdir(path + ".vztmp");
  EXPECT_EQ(MorvFileReplace(path, "a", "b"), -1);
  EXPECT_EQ(Get(path), text);
}

// Neither an end by a signal nor another run may see, or leave, what isn't complete.
TEST_F(Files, ARewriteShowsNothingBeforeItIsComplete) {
  const std::string path = Put("f", "old");
  const auto names = [&] { return std::distance(std::filesystem::directory_iterator(folder_), {}); };
  {
    auto abandoned = FileRewrite::Open(path);
    ASSERT_TRUE(abandoned && abandoned->Begin() && abandoned->Append("half"));
    EXPECT_EQ(names(), 1);
  }
  auto first = FileRewrite::Open(path);
  auto second = FileRewrite::Open(path);
  ASSERT_TRUE(first && second && first->Begin() && second->Begin());
  ASSERT_TRUE(first->Append("first") && second->Append("second"));
  EXPECT_EQ(Get(path), "old");
  EXPECT_TRUE(first->Commit());
  EXPECT_EQ(Get(path), "first");
  EXPECT_TRUE(second->Commit());
  EXPECT_EQ(Get(path), "second");
  EXPECT_EQ(names(), 1);
}

TEST_F(Files, ReplaceGoesThroughLinksAndNotThroughALeftOver) {
  Put("victim", "safe");
  const std::string path = Put("f", "abc");
  std::filesystem::create_symlink("f", At("link"));
  std::filesystem::create_symlink("victim", path + ".vztmp");
  EXPECT_EQ(MorvFileReplace(At("link"), "b", "B"), 1);
  EXPECT_EQ(Get(path), "aBc");
  EXPECT_TRUE(std::filesystem::is_symlink(At("link")));
  EXPECT_FALSE(std::filesystem::is_symlink(path));
  EXPECT_EQ(Get(At("victim")), "safe");
}

TEST_F(Files, GlobLeavesDirectoriesOut) {
  Put("b.txt", "");
  Put("a.txt", "");
  Put("A.TXT", "");
  MorvMkdir(At("d.txt"));
  Put("d.txt/c.Txt", "");
  std::filesystem::create_symlink(folder_, At("d.txt/loop.txt"));
  using Texts = std::vector<std::string>;
  EXPECT_EQ(MorvGlob(At("*.txt")), (Texts{"a.txt", "b.txt"}));
  EXPECT_EQ(MorvGlob(At("none*")), Texts{});
  EXPECT_EQ(MorvGlobR(folder_, "?.TXT"), (Texts{At("A.TXT"), At("a.txt"), At("b.txt"), At("d.txt/c.Txt")}));
  EXPECT_EQ(MorvGlobR(folder_ + "/", "loop*"), Texts{At("d.txt/loop.txt")});
  EXPECT_EQ(MorvGlobR(At("missing"), "*"), Texts{});
}

TEST_F(Files, TreesEndAtLevel65AndAtLongPaths) {
  std::string deep = folder_;
  for (int level = 1; level < 65; ++level) MorvMkdir(deep += "/d");
  MorvFileWrite(deep + "/in", "");
  MorvMkdir(deep + "/d");
  MorvFileWrite(deep + "/d/out", "");
  EXPECT_EQ(MorvGlobR(folder_, ""), std::vector<std::string>{deep + "/in"});

  std::string wide = folder_;
  while (wide.size() < 1024 - 200) MorvMkdir(wide += "/" + std::string(100, 'w'));
  const std::string fits = wide + "/" + std::string(1023 - wide.size() - 1, 'n');
  MorvFileWrite(fits, "");
  MorvFileWrite(fits + "n", "");
  EXPECT_EQ(MorvGlobR(folder_, "n*"), std::vector<std::string>{fits});
}

std::string Numbered(int from, int to) {
  std::string text;
  for (int i = from; i < to; ++i) text += "line " + std::to_string(i * 7919) + " of the log\n";
  return text;
}

TEST(Fingerprint, SimilarityFollowsTheSharedContent) {
  const std::string whole = FingerprintOf(Numbered(0, 1000));
  const auto similarity = [&](const std::string& text) {
    return MorvFingerprintSimilarity(whole, FingerprintOf(text));
  };
  EXPECT_EQ(similarity(Numbered(0, 1000)), 100);
  std::string edited = Numbered(0, 1000);
  edited.replace(5000, 1, "??");
  EXPECT_GE(similarity(edited), 90);
  EXPECT_GE(similarity(Numbered(500, 1000) + Numbered(0, 500)), 90);
  const int32_t half = similarity(Numbered(500, 1500));
  EXPECT_GT(half, 30);
  EXPECT_LT(half, 80);
  std::string other;
  for (uint32_t i = 0, x = 1; i < 20'000; ++i)
    other += static_cast<char>((x = x * 1664525 + 1013904223) >> 24);
  EXPECT_LE(similarity(other), 10);
}

TEST(Fingerprint, ShortContentsAreToldApart) {
  EXPECT_EQ(MorvFingerprintSimilarity(FingerprintOf("ab"), FingerprintOf("ab")), 100);
  EXPECT_LT(MorvFingerprintSimilarity(FingerprintOf(""), FingerprintOf(std::string(1, '\0'))), 100);
  EXPECT_GT(MorvFingerprintSimilarity(FingerprintOf("the quick brown fox jumps over the lazy dog"),
                                      FingerprintOf("the quick brown fox jumps over the lazy cat")),
            60);
}

TEST(Fingerprint, OnlyFingerprintsCompare) {
  const std::string good = FingerprintOf("x");
  std::string upper = good;
  upper.back() = 'G';
  for (const std::string& bad : {std::string(), good.substr(1), good + "0", upper, std::string(264, '0')}) {
    EXPECT_EQ(MorvFingerprintSimilarity(good, bad), -1) << bad;
    EXPECT_EQ(MorvFingerprintSimilarity(bad, good), -1) << bad;
  }
  EXPECT_EQ(MorvFileFingerprint("/nonexistent/file"), "");
}

}  // namespace
}  // namespace vorc
