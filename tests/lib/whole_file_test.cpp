#include "lib/whole_file.h"

#include "lib/sandbox.h"
#include "scratch_folder.h"

namespace vorc {
namespace {

using WholeFile = ScratchFolder;

auto Writing(std::string_view text) {
  return [text](PieceWriter write) { return write(text); };
}

TEST_F(WholeFile, OldTextStaysUntilTheNewOneIsComplete) {
  const std::string path = Put("kept", "old");
  EXPECT_FALSE(MorvWriteWholeFile(path, [](PieceWriter write) { return write("half") && false; }));
  // A file may not grow beyond a page: the like of a full disk, seen only when the file is closed.
  {
    const std::string large(5000, 'x');
    const FileSizeLimit page(4096);
    EXPECT_FALSE(MorvWriteWholeFile(path, Writing(large)));
    EXPECT_FALSE(MorvWriteWholeFile(At("new"), Writing(large)));
  }
  EXPECT_EQ(Get(path), "old");
  EXPECT_FALSE(MorvWriteWholeFile(At("no/such/folder"), Writing("x")));
  EXPECT_FALSE(MorvWriteWholeFile(folder_, Writing("x")));
  EXPECT_FALSE(MorvWriteWholeFile("/dev/full", Writing("x")));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_), {}), 1);
}

TEST_F(WholeFile, PermissionsAndLinksStay) {
  namespace fs = std::filesystem;
  const std::string path = Put("kept", "old");
  fs::permissions(path, fs::perms::owner_all);
  fs::create_symlink(path, At("link"));
  fs::create_symlink(At("made"), At("dangling"));
  EXPECT_TRUE(MorvWriteWholeFile(At("link"), Writing("new")));
  EXPECT_TRUE(MorvWriteWholeFile(At("dangling"), Writing("made")));
  EXPECT_TRUE(fs::is_symlink(At("link")) && fs::is_symlink(At("dangling")));
  EXPECT_EQ(Get(path), "new");
  EXPECT_EQ(Get(At("made")), "made");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
}

TEST_F(WholeFile, AsksTheSandbox) {
  std::filesystem::create_directory(At("root"));
  const std::string outside = Put("outside", "old");
  MorvSandboxSetRoot(At("root"));
  testing::internal::CaptureStderr();
  EXPECT_FALSE(MorvWriteWholeFile(outside, Writing("new")));
  EXPECT_FALSE(MorvWriteWholeFile(At("other"), Writing("new")));
  EXPECT_TRUE(MorvWriteWholeFile(At("root/inside"), Writing("new")));
  MorvSandboxSetRoot("");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "morv: refused '" + outside + "' - outside MORV_FILE_ROOT (" + At("root") + ")\nmorv: refused '" +
                At("other") + "' - outside MORV_FILE_ROOT (" + At("root") + ")\n");
  EXPECT_EQ(Get(outside), "old");
  EXPECT_EQ(Get(At("root/inside")), "new");
}

}  // namespace
}  // namespace vorc
