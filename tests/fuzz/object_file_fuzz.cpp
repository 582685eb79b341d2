#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <span>

#include "base/descriptor.h"
#include "output/object_reader.h"

// What any bytes do to the reader of symbol and object files.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace vorc;
  const Descriptor file(memfd_create("object", MFD_CLOEXEC));
  if (!file || write(file.get(), data, size) != static_cast<ssize_t>(size)) return 0;
  TableFile tables;
  if (ReadTableFile(file.get(), tables).empty()) {
    for (size_t i = 0; i < kDiskTables; ++i) {
      uint64_t visited = 0;
      ForEachRecord(tables, static_cast<DiskTable>(i), [&](std::span<const uint8_t>) { ++visited; });
      if (visited > tables.tables[i].count) std::abort();
    }
    std::string_view text;
    for (int64_t at = -1; at < 3; ++at) PoolText(tables, DiskTable::kStrings, at, text);
  }
  LinkerInput input;
  if (!LoadLinkerInputObjectHeader(input, file.get()).empty()) return 0;
  std::string message;
  GetLifSectionListLocation(input, &message);
  LoadSectionSymbols(input);
  CannotMix(input, input);
  return 0;
}
