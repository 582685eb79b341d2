#include "output/symbol_block.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <random>

#include "base/descriptor.h"

namespace {

using namespace vorc;

using Bytes = std::vector<uint8_t>;

// A file that is gone as soon as it is closed, with a header for a block at its start.
struct BlockFile {
  BlockFile() {
    char path[] = "/tmp/symbol_block_test_XXXXXX";
    file = Descriptor(mkstemp(path));
    unlink(path);
  }

  VsymStatus Emit(const Bytes& bytes, bool compress) {
    VsymBuilder builder;
    EXPECT_EQ(vsym_builder_init(builder, 1000), kVsymOk);
    for (size_t i = 0; i < bytes.size(); i += 999) {
      EXPECT_EQ(vsym_tell(builder), 1000 + i);
      vsym_write(builder, std::span(bytes).subspan(i, std::min<size_t>(999, bytes.size() - i)));
    }
    return vsym_emit(file.get(), builder, header, compress);
  }

  void Set(size_t at, uint64_t value) {
    for (size_t i = 0; i < 8; ++i) header[at + i] = static_cast<uint8_t>(value >> (8 * i));
  }

  Descriptor file;
  Bytes header = Bytes(kVsymHeaderSize, 0);
};

TEST(SymbolBlock, ComesBack) {
  Bytes noise(300000);
  std::generate(noise.begin(), noise.end(), std::mt19937_64(1));
  const struct {
    Bytes block;
    bool compress, compressed;
  } cases[] = {{{}, false, false},
               {{}, true, false},
               {Bytes(500000, 'x'), false, false},
               {Bytes(500000, 'x'), true, true},
               {noise, true, false}};
  for (const auto& test : cases) {
    BlockFile file;
    ASSERT_EQ(file.Emit(test.block, test.compress), kVsymOk);
    EXPECT_EQ(file.header[kVsymCompressedAt], test.compressed);
    const off_t size = lseek(file.file.get(), 0, SEEK_END);
    EXPECT_EQ(size < static_cast<off_t>(test.block.size()), test.compressed);
    Bytes block;
    EXPECT_EQ(vsym_read_block(file.file.get(), file.header, block), kVsymOk);
    EXPECT_EQ(block, test.block);
  }
}

TEST(SymbolBlock, DamageIsTold) {
  constexpr size_t kSize = 500000;
  const struct {
    size_t at;
    uint64_t value;
    VsymStatus status;
  } cases[] = {
      {kVsymLengthAt, kSize - 1, kVsymRefused},
      {kVsymLengthAt, kSize + 1, kVsymWrongSize},
      {kVsymLengthAt, 0, kVsymWrongSize},
      {kVsymLengthAt, ~uint64_t{0}, kVsymWrongSize},
      {kVsymLengthAt, ~uint64_t{0} / 2, kVsymWrongSize},
      {kVsymStoredAt, 0, kVsymWrongSize},
      {kVsymStoredAt, 100, kVsymRefused},
      {kVsymStoredAt, ~uint64_t{0} / 2, kVsymIo},
      {kVsymCompressedAt, 0, kVsymIo},
  };
  BlockFile file;
  ASSERT_EQ(file.Emit(Bytes(kSize, 'x'), true), kVsymOk);
  const Bytes header = file.header;
  Bytes block;
  for (const auto& test : cases) {
    file.header = header;
    file.Set(test.at, test.value);
    EXPECT_EQ(vsym_read_block(file.file.get(), file.header, block), test.status)
        << test.at << ' ' << test.value;
  }
  EXPECT_EQ(vsym_read_block_at(file.file.get(), header, 1 << 20, block), kVsymIo);
  EXPECT_EQ(vsym_read_block_at(file.file.get(), header, 1, block), kVsymIo);
  EXPECT_EQ(vsym_read_block(-1, header, block), kVsymIo);
}

}  // namespace
