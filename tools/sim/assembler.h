#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "sim/data_section.h"
#include "sim/program.h"

namespace vorc::sim {

struct AssemblyOptions {
  std::optional<uint64_t>
      base;          // added to all addresses; kPicBase for PIC text and 0 for other text if not set
  uint64_t gap = 0;  // free bytes behind each variable
  uint64_t data_bytes = kDefaultDataBytes;  // that all variables may take, up to kMaxDataBytes
};

/// Where PIC text is placed by default: away from its link addresses, so that an address which nobody
/// made relative leads nowhere.
inline constexpr uint64_t kPicBase = 0x01000000;

/// Assembles a whole text into a program that can be run. Nothing, with the first error, if a line can't be
/// understood or names something that is defined nowhere. (A call or LOADADDR of such a name is a fault only
/// when it is executed.)
std::optional<Program> Assemble(std::string_view text, const AssemblyOptions& options, AssemblyError* error);

}  // namespace vorc::sim
