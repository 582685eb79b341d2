#include "lib/reading.h"

#include <unistd.h>

#include <vector>

#include "scratch_folder.h"

namespace vorc {
namespace {

class Reading : public ScratchFolder {
 protected:
  LineReader Reader(std::string_view bytes, size_t block) {
    return LineReader(OpenForReading(Put("f", bytes)), block);
  }

  std::vector<std::string> Pieces(std::string_view bytes, size_t most, size_t block) {
    LineReader reader = Reader(bytes, block);
    std::vector<std::string> pieces;
    while (const auto piece = reader.NextPiece(most)) pieces.emplace_back(*piece);
    return pieces;
  }
};

TEST_F(Reading, LinesSurviveEveryBlockSize) {
  const std::string long_line(1000, 'x');
  const std::vector<std::string> lines = {"a\n", "\n", long_line + "\r\n", std::string("n\0l\n", 4), "last"};
  std::string all;
  for (const std::string& line : lines) all += line;
  for (const size_t block : {1, 2, 3, 7, 1001, 4096}) {
    LineReader reader = Reader(all, block);
    for (const std::string& line : lines) ASSERT_EQ(reader.NextLine(), line) << block;
    EXPECT_EQ(reader.NextLine(), std::nullopt);
    EXPECT_FALSE(reader.failed());

    LineReader blocks = Reader(all, block);
    std::string joined;
    while (const auto some = blocks.NextLines()) {
      EXPECT_TRUE(some->ends_with('\n') || some->ends_with("last"));
      joined += *some;
    }
    EXPECT_EQ(joined, all) << block;
  }
}

TEST_F(Reading, PiecesOfALongLineLoseNothing) {
  using Texts = std::vector<std::string>;
  for (const size_t block : {7, 8, 64}) {
    EXPECT_EQ(Pieces("abcd\nefgh\r\nijklm\n", 4, block), (Texts{"abcd", "efgh", "ijkl", "m"})) << block;
    EXPECT_EQ(Pieces("\n\r\na\r\r\n", 4, block), (Texts{"", "", "a"})) << block;
    // A CR within a line belongs to it, wherever the line is cut.
    EXPECT_EQ(Pieces("abc\rdefg\rh", 4, block), (Texts{"abc\r", "defg", "\rh"})) << block;
    EXPECT_EQ(Pieces("abcd\r", 4, block), (Texts{"abcd"})) << block;
    EXPECT_EQ(Pieces("", 4, block), Texts{}) << block;
  }
}

TEST_F(Reading, ALineFromAPipeComesWithoutWaitingForMore) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  LineReader reader(File(fdopen(ends[0], "rb")));
  ASSERT_EQ(write(ends[1], "one\n", 4), 4);
  EXPECT_EQ(reader.NextLine(), "one\n");
  close(ends[1]);
  EXPECT_EQ(reader.NextLine(), std::nullopt);
}

TEST_F(Reading, WhatHasNoBytesDoesNotOpen) {
  EXPECT_EQ(OpenForReading(folder_), nullptr);
  EXPECT_EQ(OpenForReading(At("missing")), nullptr);
  EXPECT_EQ(OpenForReading(""), nullptr);
}

TEST_F(Reading, ToTheEndFromWhereverTheStreamStands) {
  const File file = OpenForReading(Put("f", "0123456789"));
  std::fseek(file.get(), 4, SEEK_SET);
  EXPECT_EQ(ReadToEnd(file.get()), "456789");
  EXPECT_EQ(ReadToEnd(file.get()), "");
  // The kernel's files have text but a size of 0.
  EXPECT_NE(ReadToEnd(OpenForReading("/proc/self/status").get()).value_or(""), "");
}

}  // namespace
}  // namespace vorc
