#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "output/disk_records.h"
#include "program/slot.h"

namespace vorc {

/// Takes the bytes of the tables as they are made.
class TableSink {
 public:
  virtual ~TableSink() = default;
  /// False when nothing more can be taken: the encoding ends then.
  virtual bool Append(std::span<const uint8_t> bytes) = 0;
};

/// Where a table stands in the block.
struct TableEntry {
  uint64_t count = 0;  ///< of records; of a pool its bytes
  uint64_t start = 0;  ///< bytes in front of the table
};

struct TableDirectory {
  std::array<TableEntry, kDiskTables> entries;
  uint64_t bytes = 0;  ///< of all tables
};

/// Sends all records of a compilation as they stand in a file, one table behind the other, and tells where
/// each begins. Ends early once the sink takes no more.
TableDirectory EncodeProgram(const C_SLOT& slot, TableSink& sink);

}  // namespace vorc
