#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vorc {

enum class Core { kQlx, kRiscV, kAArch64 };

/// The command line, read.
struct Options {
  bool version = false;
  bool morv = false;
  bool rtl = false;
  bool quiet = false;
  bool llmtrace = false;
  bool pic = false;
  bool compress = false;
  bool warnings_as_errors = false;
  bool multiply_divide = true;
  int cpu_size = 64;
  int address_size = 64;
  int address_override = 0;     ///< 0 for none
  int exe_format = 0;           ///< 0 native, 1 ELF, 2 PE, 3 position-independent native
  int debug_symbols = 0;        ///< 1 keep, -1 strip, 0 as the build has it
  int optimization_level = -1;  ///< -1 for not given
  int retarget_xlen = 32;
  Core core = Core::kQlx;
  std::string source;
  std::vector<std::string> script_arguments;
  std::vector<std::string> include_paths;
  std::vector<std::string> defines;
};

/// Reads the arguments behind the program's name, from left to right. An error is told on standard
/// error and stops at the argument that holds it; the exit status is the answer then.
std::optional<int> ParseOptions(const std::vector<std::string>& arguments, Options* options);

/// Settles register and address widths. An error is told and answers the exit status.
std::optional<int> SettleWidths(Options* options);

/// Text of the QUERY_STRING variable for the script's arguments: "1=first&2=second".
std::string BuildQueryString(const std::vector<std::string>& arguments);

/// The help text, on standard error.
void PrintUsage();

}  // namespace vorc
