#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorc {

/// The processor that code is made for.
enum class Core : uint8_t { kQlx, kRiscV, kAArch64 };

/// What the command line asks of a compilation and of the stages behind the parser.
struct TargetOptions {
  int cpu_size = 64;      ///< bits of a register: 32 or 64
  int address_size = 64;  ///< bits of an address: 32 or 64
  int exe_format = 0;     ///< 0 native, 1 ELF, 2 PE, 3 position-independent native
  int debug_symbols = 0;  ///< 1 keep, -1 strip, 0 as the build has it
  int optimization_level = 0;
  Core core = Core::kQlx;
  int xlen = 32;                ///< register width of a RISC-V core
  bool multiply_divide = true;  ///< the core has instructions for both
  bool pic = false;             ///< position-independent code
  bool compress = false;        ///< tables of object files are deflated
  bool warnings_as_errors = false;
  bool script = false;  ///< the dialect is accepted, and statements run
  bool quiet = false;   ///< no lines of progress
  bool typed = false;   ///< a script that is typed in: `$name` statements may stand outside of functions
  std::vector<std::string> include_paths;

  int AddressBytes() const { return address_size / 8; }
};

/// The name of an executable format; "unknown" for a number that is none.
std::string_view ExeFormatName(uint64_t format);
/// The format of a name, whose case doesn't count and of which 15 characters do. -1 for none.
int ExeFormatFromName(std::string_view name);

}  // namespace vorc
