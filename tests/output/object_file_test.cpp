#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "../lib/temp_folder.h"
#include "base/descriptor.h"
#include "output/object_reader.h"
#include "output/object_writer.h"
#include "output/program_tables.h"
#include "output/symbol_block.h"

namespace {

using namespace vorc;

// A file that is gone as soon as it is closed.
Descriptor FileOf(const std::vector<uint8_t>& bytes) {
  char path[] = "/tmp/object_file_test_XXXXXX";
  Descriptor file(mkstemp(path));
  unlink(path);
  EXPECT_EQ(write(file.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  return file;
}

SYM_REC* AddArray(C_SLOT& slot, const char* name, std::vector<int64_t>& sizes, int16_t count) {
  SYM_REC* symbol = slot.New(slot.SymbolRecords, "symbols");
  symbol->name = slot.Names.Intern(name);
  symbol->Shape = {sizes.data(), count, false};
  slot.Globals.Symbols.Append(symbol);
  return symbol;
}

TEST(ObjectFile, RecordsComeBack) {
  const TempFolder folder;
  C_SLOT slot;
  std::vector<int64_t> sizes(300, 7);
  sizes[0] = 1'000'000'007;
  // What the 16-bit count says, and what stands in the file.
  const struct {
    int16_t count;
    size_t stored;
  } cases[] = {{0, 0}, {2, 2}, {-3, 0}, {300, 256}, {1, 1}};
  for (const auto& test : cases) AddArray(slot, "array", sizes, test.count);
  EXPR_NODE* node = slot.New(slot.Expressions, "nodes");
  node->Symbol = slot.SymbolRecords.At(3);
  node->NumberValue = -5;
  for (const bool compress : {false, true}) {
    slot.Target.compress = compress;
    const std::string source = folder.path() + "/" + (compress ? std::string(240, 'n') : "x") + ".c";
    ASSERT_TRUE(WriteSymbolAndObjectFiles(slot, source, {1, 2}));
    ASSERT_TRUE(WriteSymbolAndObjectFiles(slot, source, {1, 2})) << "a second run replaces the files";
    for (const char* extension : {".obj", ".symtab"}) {
      const std::string path = source.substr(0, source.size() - 2) + extension;
      struct stat about {};
      ASSERT_EQ(stat(path.c_str(), &about), 0);
      EXPECT_EQ(about.st_mode & 0777, 0200u);
      chmod(path.c_str(), 0600);
      const Descriptor fd(open(path.c_str(), O_RDONLY));
      TableFile file;
      ASSERT_EQ(ReadTableFile(fd.get(), file), "");
      EXPECT_EQ(file.header[kVsymCompressedAt], compress);
      const std::string name = *extension == '.' && extension[1] == 'o' ? path : source;
      EXPECT_EQ(GetText(file.header, header::kName, 256), name.substr(0, 255));
      size_t number = 0;
      EXPECT_TRUE(ForEachRecord(file, DiskTable::kSymbol, [&](std::span<const uint8_t> record) {
        std::string_view text;
        EXPECT_TRUE(PoolText(file, DiskTable::kStrings, GetNumber(record, disk::SymbolRec::Name), text));
        EXPECT_EQ(text, "array");
        EXPECT_EQ(GetUnsigned(record, kSymbolHead, 8), cases[number].stored > 0 ? 1'000'000'007u : 0u);
        EXPECT_EQ(GetNumber(record, disk::SymbolRec::Next),
                  number == 4 ? -1 : static_cast<int64_t>(number) + 1);
        ++number;
      }));
      EXPECT_EQ(number, 5u);
      ForEachRecord(file, DiskTable::kExpression, [](std::span<const uint8_t> record) {
        EXPECT_EQ(GetNumber(record, disk::ExpressionRec::Symbol), 3);
        EXPECT_EQ(GetNumber(record, disk::ExpressionRec::NumberValue), -5);
        EXPECT_EQ(GetNumber(record, disk::ExpressionRec::Cast), -1);
      });
      const TableFile::Table* tables = file.tables.data();
      EXPECT_EQ(tables[2].start - tables[1].start, 5 * (1032 + 496) + 259 * 8u);
    }
  }
}

struct Sections {
  explicit Sections(uint32_t count) : bytes(1568) {
    PutNumber(bytes, 52, 2, 3);
    PutNumber(bytes, 1488, 4, count);
    PutNumber(bytes, 1496, 8, bytes.size());
  }
  void Add(const char* name, std::initializer_list<const char*> symbols, bool data) {
    const size_t at = bytes.size();
    bytes.resize(at + 344);
    std::copy_n(name, strlen(name), &bytes[at + 12]);
    PutNumber(bytes, at + 328, 8, symbols.size());
    for (const char* symbol : symbols) {
      const size_t element = bytes.size();
      bytes.resize(element + 1400 + (data ? 10 : 0));
      std::copy_n(symbol, strlen(symbol), &bytes[element + 16]);
      PutNumber(bytes, element + 1364, 4, 77);
      PutNumber(bytes, element + 1372, 4, *symbol == '_');
      PutNumber(bytes, element + 1392, 8, 10);
    }
    PutNumber(bytes, at + 336, 8, bytes.size());
  }
  std::vector<uint8_t> bytes;
};

TEST(ObjectFile, SectionsAreCollected) {
  Sections sections(3);
  sections.Add("code", {"f", "", "_local", "g"}, true);
  sections.Add("unresolved", {"nothing"}, true);
  sections.Add("BSS", {"a", "b"}, false);
  const Descriptor fd = FileOf(sections.bytes);
  LinkerInput input{"x.obj", {}, 0, false, {}};
  ASSERT_EQ(LoadLinkerInputObjectHeader(input, fd.get()), "");
  EXPECT_EQ(GetLifHandle(input), fd.get());
  ASSERT_TRUE(LoadSectionSymbols(input));
  std::string names;
  for (const SectionSymbol& symbol : GetLifSectionSymbols(input)) names += symbol.name + " ";
  EXPECT_EQ(names, "f g a b ");
  EXPECT_EQ(input.symbols[0].value, 77u);

  sections.bytes.pop_back();
  const Descriptor cut = FileOf(sections.bytes);
  LinkerInput other{"x.obj", {}, 0, false, {}};
  ASSERT_EQ(LoadLinkerInputObjectHeader(other, cut.get()), "");
  EXPECT_FALSE(LoadSectionSymbols(other));
  EXPECT_TRUE(other.symbols.empty());
}

TEST(ObjectFile, HeadersAreRefused) {
  Sections sections(10001);
  const struct {
    uint64_t version;
    size_t size;
    const char* message;
  } cases[] = {{3, 911, "Link error: invalid input file 'x'"},
               {3, 1567, "Link error: invalid input file 'x'"},
               {4, 1568, "Link error: invalid input file format'x'"},
               {1, 1568, "Link error: invalid input file format'x'"},
               {2, 960, ""},
               {5, 912, ""},
               {3, 1568, ""}};
  LinkerInput input;
  for (const auto& test : cases) {
    std::vector<uint8_t> bytes = sections.bytes;
    PutNumber(bytes, 52, 2, test.version);
    bytes.resize(test.size);
    input = {"x", {}, 0, false, {}};
    EXPECT_EQ(LoadLinkerInputObjectHeader(input, FileOf(bytes).get()), test.message);
  }
  std::string message;
  EXPECT_EQ(GetLifSectionListLocation(input, &message).count, 0u);
  EXPECT_EQ(message.substr(0, 52), "Link error: implausible section_count (10001) readin");
}

}  // namespace
