#include "lib/sandbox.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "lib/processes.h"
#include "temp_folder.h"

namespace vorc {
namespace {

namespace fs = std::filesystem;

class Sandbox : public testing::Test {
 protected:
  Sandbox() {
    fs::create_directories(root_);
    fs::create_directories(top_ / "data2");
    fs::create_directories(root_ + "/inner");
    top_.Write("data/file", "inside");
    top_.Write("data2/file", "secret");
    MorvSandboxSetRoot(root_);
  }
  ~Sandbox() override { MorvSandboxSetRoot(""); }

  TempFolder top_;
  std::string root_ = top_ / "data";
};

TEST_F(Sandbox, JudgesByWhereAPathLeads) {
  fs::create_symlink("../data2/new", root_ + "/dangling_out");
  fs::create_symlink("inner/new", root_ + "/dangling_in");
  fs::create_symlink(root_ + "/dangling_out", root_ + "/inner/chain");
  fs::create_symlink("loop", root_ + "/loop");
  fs::create_symlink(root_ + "/file", top_ / "data2/in");
  const std::string allowed[] = {root_,
                                 root_ + "/file",
                                 root_ + "/new",
                                 root_ + "/inner/../new",
                                 root_ + "/../data/file",
                                 top_ / "data2/in",
                                 root_ + "/dangling_in",
                                 root_ + "/inner/.."};
  const std::string refused[] = {root_ + "/missing/new",
                                 root_ + "/missing/../file",
                                 root_ + "/inner/chain",
                                 root_ + "/loop",
                                 root_ + std::string("/file\0/../../data2/file", 23),
                                 std::string(5000, 'x'),
                                 std::string()};
  testing::internal::CaptureStderr();
  for (const std::string& path : allowed) EXPECT_TRUE(MorvSandboxAllows(path)) << path;
  for (const std::string& path : refused) {
    EXPECT_FALSE(MorvSandboxAllows(path)) << path;
    EXPECT_EQ(MorvSafeFopen(path, "ab"), nullptr) << path;
  }
  testing::internal::GetCapturedStderr();
  EXPECT_FALSE(fs::exists(top_ / "data2/new"));
  EXPECT_EQ(FileText(top_ / "data2/file"), "secret");
  ASSERT_NE(MorvSafeFopen(root_ + "/dangling_in", "wb"), nullptr);
  EXPECT_TRUE(fs::exists(root_ + "/inner/new"));
}

TEST_F(Sandbox, TellsWhatItRefuses) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(MorvSafeFopen("/etc/passwd", "rb"), nullptr);
  EXPECT_EQ(MorvSafeFopen(root_ + "/nothing", "rb"), nullptr);
  Processes processes;
  EXPECT_EQ(processes.MorvExec("touch x"), -1);
  EXPECT_EQ(processes.MorvExecCapture({}, 100), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "morv: refused '/etc/passwd' - outside MORV_FILE_ROOT (" + root_ +
                ")\nmorv: refused to run 'touch x' - no process may start inside MORV_FILE_ROOT (" + root_ +
                ")\nmorv: refused to run '(a command)' - no process may start inside MORV_FILE_ROOT (" +
                root_ + ")\n");
}

TEST_F(Sandbox, TakesRootsOfManyForms) {
  const std::string file = root_ + "/file";
  MorvSandboxSetRoot("/");
  EXPECT_TRUE(MorvSandboxActive());
  EXPECT_TRUE(MorvSandboxAllows("/etc/passwd"));
  EXPECT_NE(MorvSafeFopen(file, "rb"), nullptr);
  MorvSandboxSetRoot(root_ + "/inner/..//");
  EXPECT_TRUE(MorvSandboxAllows(file));
  EXPECT_FALSE(MorvSandboxAllows(top_ / "data2/file"));
  MorvSandboxSetRoot(top_ / "not_there/\\");
  EXPECT_FALSE(MorvSandboxAllows(file));
  EXPECT_FALSE(MorvSandboxAllows(top_ / "not_there_either"));
  MorvSandboxSetRoot("");
  EXPECT_FALSE(MorvSandboxActive());
  EXPECT_TRUE(MorvSandboxAllows("/etc/passwd"));
}

TEST_F(Sandbox, NothingIsRenamedAcrossItsBorder) {
  fs::create_directory(top_ / "empty");
  fs::create_symlink(top_ / "data2", root_ + "/folder_out");
  const struct {
    std::string from, to;
    bool allowed;
  } cases[] = {
      {top_ / "data2/file", root_ + "/stolen", false},
      {root_ + "/file", top_ / "data2/given", false},
      {root_ + "/folder_out/file", root_ + "/stolen", false},
      {root_ + "/file", root_ + "/folder_out/given", false},
      {top_ / "data2", root_ + "/stolen/", false},
      {root_, top_ / "moved", false},
      {top_ / "empty", root_, false},
      {top_.path(), top_.path() + "_moved", false},
      {root_ + "/inner/..", root_ + "/moved", false},
      {root_ + "/file/", root_ + "/renamed", false},
      {root_ + "/file", root_ + "/inner/renamed", true},
      {root_ + "/inner/renamed", root_ + "/inner/../file", true},
      {root_ + "/inner/", root_ + "/moved/", true},
      {root_ + "/folder_out", root_ + "/link", true},
      {top_ / "data2/file", top_ / "data2/renamed", true},
  };
  testing::internal::CaptureStderr();
  for (const auto& each : cases) EXPECT_EQ(MorvSafeRename(each.from, each.to), each.allowed) << each.from;
  const std::string told = testing::internal::GetCapturedStderr();
  EXPECT_EQ(std::ranges::count(told, '\n'), 8) << told;
  EXPECT_TRUE(told.starts_with("morv: refused '" + (top_ / "data2/file") + "' - outside")) << told;
}

TEST(SandboxEnvironment, IsReadOnceAtTheFirstQuestion) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  TempFolder folder;
  setenv("MORV_FILE_ROOT", folder.path().c_str(), 1);
  EXPECT_EXIT(
      {
        const char* root = std::getenv("MORV_FILE_ROOT");
        const std::string inside = std::string(root) + "/x";
        bool right = MorvSandboxAllows(inside) && !MorvSandboxAllows("/etc/passwd");
        unsetenv("MORV_FILE_ROOT");
        right = right && MorvSandboxActive();
        std::_Exit(right ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  unsetenv("MORV_FILE_ROOT");
}

TEST(SafeFopen, OpensInEveryModeAndCloseOnExec) {
  TempFolder folder;
  const std::string path = folder / "file";
  for (const std::string& root : {std::string(), folder.path()}) {
    MorvSandboxSetRoot(root);
    EXPECT_EQ(MorvSafeFopen(path, "rb"), nullptr);
    EXPECT_EQ(std::fputs("one", MorvSafeFopen(path, "wb").get()), 1);
    EXPECT_EQ(std::fputs("two", MorvSafeFopen(path, "ab").get()), 1);
    EXPECT_EQ(std::fputs("O", MorvSafeFopen(path, "r+b").get()), 1);
    EXPECT_EQ(FileText(path), "Onetwo");
    EXPECT_EQ(MorvSafeFopen(path, "wx"), nullptr);
    EXPECT_EQ(MorvSafeFopen(path, "z"), nullptr);
    EXPECT_EQ(MorvSafeFopen(folder.path(), "wb"), nullptr);
    const File file = MorvSafeFopen(path, "rb");
    EXPECT_EQ(fcntl(fileno(file.get()), F_GETFD), FD_CLOEXEC);
    fs::remove(path);
  }
  MorvSandboxSetRoot("");
}

TEST(ReadWholeFile, ReadsAllOrNothing) {
  TempFolder folder;
  const std::string bytes("a\0\xff\n", 4);
  EXPECT_EQ(MorvReadWholeFile(folder.Write("bytes", bytes)), bytes);
  EXPECT_EQ(MorvReadWholeFile(folder.Write("empty", "")), "");
  EXPECT_EQ(MorvReadWholeFile("/dev/zero"), "");
  EXPECT_GT(MorvReadWholeFile("/proc/self/status").value_or("").size(), 100U);
  const long before = OpenDescriptors();
  EXPECT_EQ(MorvReadWholeFile(folder / "missing"), std::nullopt);
  EXPECT_EQ(MorvReadWholeFile(folder.path()), std::nullopt);
  EXPECT_EQ(MorvReadWholeFile("/proc/self/mem"), std::nullopt);
  EXPECT_EQ(OpenDescriptors(), before);
}

}  // namespace
}  // namespace vorc
