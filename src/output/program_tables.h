#pragma once

#include <array>
#include <cstdint>

#include "output/disk_records.h"
#include "output/symbol_block.h"
#include "program/slot.h"

namespace vorc {

/// All records of a compilation as they stand in a file, one table behind the other.
struct ProgramTables {
  struct Entry {
    uint64_t count = 0;  ///< of records; of a pool its bytes
    uint64_t start = 0;  ///< bytes in front of the table
  };

  VsymBuilder block;
  std::array<Entry, kDiskTables> directory;
};

/// Fills `tables`. False if memory ran out.
bool EncodeProgram(const C_SLOT& slot, ProgramTables& tables);

}  // namespace vorc
