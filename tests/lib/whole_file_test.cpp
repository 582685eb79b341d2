#include "lib/whole_file.h"

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
  EXPECT_TRUE(MorvWriteWholeFile(path, Writing("new")));
  EXPECT_EQ(Get(path), "new");
  EXPECT_FALSE(MorvWriteWholeFile(At("no/such/folder"), Writing("x")));
  EXPECT_FALSE(MorvWriteWholeFile(folder_, Writing("x")));
  EXPECT_FALSE(MorvWriteWholeFile("/dev/full", Writing("x")));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_), {}), 1);
}

}  // namespace
}  // namespace vorc
