#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vorc {

/// The tables of symbol and object files in the order of their directories.
enum class DiskTable : int8_t {
  kNone = -1,
#define RECORD(id, title, bytes) k##id,
#define FIELD(name, offset, width, type, target)
#define END()
#include "output/disk_records.def"
};

/// A scope is no table: it stands inside of other records.
inline constexpr size_t kDiskTables = static_cast<size_t>(DiskTable::kScope);
static_assert(kDiskTables == 21);

enum class DiskType : uint8_t {
  kNumber,      ///< signed, low byte first
  kText,        ///< ends at a zero
  kName,        ///< offset in the texts, -1 for none
  kTokenName,   ///< offset in the token names
  kReference,   ///< index of a record of `target`, -1 for none
  kReferences,  ///< a row of such
  kBytes,       ///< a row of small numbers
  kDimensions,  ///< array sizes of eight bytes
  kScope,
};

/// A field of a record as it stands in a file.
struct DiskField {
  const char* name;
  uint16_t offset;
  uint16_t width;
  DiskType type;
  DiskTable target;
};

/// A kind of record: one field table serves writer, reader and dump.
struct DiskRecord {
  const char* title;
  size_t bytes;
  std::span<const DiskField> fields;
};

/// By DiskTable, the scope included.
const DiskRecord& DiskRecordOf(DiskTable table);

// disk::SymbolRec::Name and the like are the fields.
namespace disk {
#define RECORD(id, title, bytes) \
  struct id##Rec {               \
    static constexpr size_t kBytes = bytes;
#define FIELD(name, offset, width, type, target) \
  static constexpr DiskField name{#name, offset, width, DiskType::type, DiskTable::target};
#define END() \
  }           \
  ;
#include "output/disk_records.def"
}  // namespace disk

// A symbol is written without the unused part of its dimensions.
inline constexpr size_t kSymbolHead = disk::SymbolRec::Dimensions.offset;
inline constexpr size_t kSymbolTail = kSymbolHead + disk::SymbolRec::Dimensions.width;
inline constexpr size_t kDimensionBytes = 8;

/// How many of a symbol's dimensions stand in a file, by the 16-bit count in its head.
inline size_t StoredDimensions(int16_t count) {
  constexpr size_t kMost = disk::SymbolRec::Dimensions.width / kDimensionBytes;
  const auto wanted = static_cast<size_t>(count > 0 ? count : 0);
  return wanted < kMost ? wanted : kMost;
}

/// What stands in front of the tables.
namespace header {
inline constexpr std::string_view kMagic = "telmunda";
inline constexpr size_t kShortLength = 32;
inline constexpr size_t kFormatA = 40;
inline constexpr size_t kFormatB = 48;
inline constexpr size_t kVersion = 52;
inline constexpr size_t kName = 310;
inline constexpr size_t kNameRoom = 255;
inline constexpr size_t kPic = 864;
inline constexpr size_t kExeFormat = 872;
inline constexpr size_t kAddressSize = 880;
inline constexpr size_t kCpuSize = 888;
inline constexpr size_t kCpuModel = 896;
inline constexpr size_t kBlockOffset = 908;
inline constexpr size_t kBlockOffsetAgain = 912;
inline constexpr size_t kReference = 936;
inline constexpr size_t kShortBytes = 912;
}  // namespace header

/// One of the two kinds of file.
struct DiskFormat {
  uint16_t version;
  size_t header_bytes;
  size_t directory;
};
inline constexpr DiskFormat kObjectFormat{3, 1568, 952};
inline constexpr DiskFormat kSymbolFormat{1, 1504, 1168};

/// The low `width` bytes of a number, at most 8, low byte first; they lie within `bytes`.
void PutNumber(std::span<uint8_t> bytes, size_t offset, size_t width, uint64_t value);
uint64_t GetUnsigned(std::span<const uint8_t> bytes, size_t offset, size_t width);
/// The signed number of a field within `bytes`.
int64_t GetNumber(std::span<const uint8_t> bytes, const DiskField& field);
/// Up to the first zero.
std::string_view GetText(std::span<const uint8_t> bytes, size_t offset, size_t room);

}  // namespace vorc
