#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "output/disk_records.h"

namespace vorc {

/// A symbol that a section of an object defines.
struct SectionSymbol {
  std::string name;
  uint32_t value = 0;
  std::string section_name;
  uint64_t section = 0;  ///< place of its section's record
  uint64_t element = 0;  ///< place of its element
};

/// Where the list of an object's sections begins, and how long it is.
struct SectionList {
  uint64_t offset = 0;
  uint32_t count = 0;
};

/// An object file that is about to be linked. The descriptor is the caller's.
struct LinkerInput {
  std::string path;
  std::vector<uint8_t> header;
  uint16_t version = 0;
  bool symbols_loaded = false;
  std::vector<SectionSymbol> symbols;
};

inline constexpr uint16_t kOldObjectVersion = 2;
inline constexpr uint16_t kLibraryVersion = 5;

/// Reads the header of an object. An empty text, or a line that tells why it is none. A library is one by
/// its version, and keeps only the first part of its header.
std::string LoadLinkerInputObjectHeader(LinkerInput& input, int fd);
/// The descriptor that the header was read from; -1 for none.
int GetLifHandle(const LinkerInput& input);
/// The sections of an object. `message` tells of a count that can't be true; there are none then.
SectionList GetLifSectionListLocation(const LinkerInput& input, std::string* message);
/// What the sections define, once it is loaded.
const std::vector<SectionSymbol>& GetLifSectionSymbols(const LinkerInput& input);
/// Collects what the sections define, once. False, with nothing collected, if the list leaves the file or
/// never ends.
bool LoadSectionSymbols(LinkerInput& input);

/// Why two objects can't become one program: the line, or an empty text.
std::string CannotMix(const LinkerInput& first, const LinkerInput& second);

/// The tables of a symbol or object file of the compiler.
struct TableFile {
  struct Table {
    uint64_t count = 0;
    uint64_t start = 0;  ///< in the block
  };
  DiskFormat format{};
  std::vector<uint8_t> header;
  std::vector<uint8_t> block;  ///< as it was before deflation
  std::array<Table, kDiskTables> tables;
};

/// Reads a file and holds its directory against its block. An empty text, or what is wrong with it; the
/// header is kept if it was there.
std::string ReadTableFile(int fd, TableFile& file);

/// Hands over the records of a table one by one, symbols with room for all their dimensions. Pools have
/// none. False if the table ends early.
bool ForEachRecord(const TableFile& file, DiskTable table,
                   const std::function<void(std::span<const uint8_t> record)>& visit);

/// A text of a pool: what stands at the offset, up to a zero. False if nothing can stand there.
bool PoolText(const TableFile& file, DiskTable pool, int64_t offset, std::string_view& text);

}  // namespace vorc
