#include "driver/options.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace vorc {

namespace {

constexpr size_t kMostScriptArguments = 64;
constexpr size_t kMostIncludePaths = 32;
constexpr size_t kMostDefines = 64;
constexpr int kHighestOptimization = 1;
constexpr int kExitError = 1;
constexpr int kExitMisuse = 2;

constexpr const char* kUsage =
    "Usage: vorc [-morv] [-Iincludepath ...] [-Dname[=value] ...] <sourcefile.c>\n"
    "  Compiles a C/C++ source file to QLX32 assembly (.asm)\n"
    "  -morv       interpret and execute in-process instead of compiling to\n"
    "              assembly (host-native execution, independent of the QLX32\n"
    "              hardware target) - no .asm/.o output in this mode\n"
    "  -morvquiet  with -morv, suppress vorc's own status lines (Compiling:/\n"
    "              Total errors:/etc) from stdout - real error text (if any)\n"
    "              and the interpreted program's own output are unaffected\n"
    "  -llmtrace   with -morv, print a detailed educational walkthrough of every\n"
    "              LLM-pipeline builtin as it runs (tokenizing, embeddings,\n"
    "              positional encoding, attention, softmax, loss, backward, SGD),\n"
    "              including WHY each step exists - for teaching how an LLM works\n"
    "  -rtl        translate the script's integer functions into synthesizable\n"
    "              Verilog (<source>.v) plus a self-checking testbench\n"
    "              (<source>_tb.v) instead of running the script\n"
    "  -Ipath      additional #include search directory (repeatable)\n"
    "  -Dname[=value]  define a preprocessor macro, as '-DNAME', '-DNAME=VALUE',\n"
    "              '-D NAME', or '-D NAME=VALUE' (repeatable)\n"
    "  -cpu32      32-bit data registers (default is 64). Implies -addr32\n"
    "              unless -addr64 is also given.\n"
    "  -cpu64      explicit form of the default\n"
    "  -addr32     32-bit address bus / pointers, INDEPENDENT of the register\n"
    "              width. '-addr32' with the default 64-bit registers gives\n"
    "              64-bit registers on a 32-bit bus - a real machine shape\n"
    "              (RV32D, ARMv7+NEON, MIPS64 in 32-bit addressing mode).\n"
    "  -addr64     64-bit address bus (default)\n"
    "              Order does not matter: an explicit -addr32/-addr64 always\n"
    "              wins over the width implied by -cpu32/-cpu64.\n"
    "  -compress   deflate the symbol tables in the object and set\n"
    "              COMPRESSED=1 in the header; vlink/vlib/vdbg inflate\n"
    "              transparently. Symbol tables only - code is untouched.\n"
    "  exe=FMT     final executable container: native (or vx), elf, pe.\n"
    "              Default native - the vorc .vx that ELDO and bare-metal\n"
    "              targets link to. Independent of the CPU: the same code\n"
    "              ships as .vx or ELF. Emitted as EXEFORMAT in the .asm and\n"
    "              stamped into the object header, so vlink/vdis/vmap/vsym/\n"
    "              vxtobin/vhex* read it from the file. '-exe=FMT',\n"
    "              'exeformat=FMT' and '-exeformat=FMT' all mean the same.\n"
    "  -o<n>       optimization LEVEL - NOT an output filename (vorc writes\n"
    "              its output next to the source). -o0 none (default),\n"
    "              -o1 reuse values already in registers. Higher numbers are\n"
    "              clamped to -o1 with a warning; nothing above it exists yet.\n"
    "  -core=rv32  generate RV32I instead of QLX, via the retarget back end.\n"
    "  -core=aarch64  generate AArch64 (A64) instead of QLX.\n"
    "  -core=rv64  generate RV64IM instead of QLX.\n"
    "              Writes <source>.rv32.lst and prints a coverage summary\n"
    "              naming every three-address opcode not yet implemented.\n"
    "  -Werr       treat warnings as errors (-Werror accepted too)\n"
    "  -debug      keep debug symbols in the final executable\n"
    "  -nodebug    strip them. Saying neither leaves the current behaviour\n"
    "              alone, so existing builds are unaffected.\n"
    "  Output files written next to the source:\n"
    "    <source>.asm   \xE2\x80\x94 QLX32 assembly\n"
    "    <source>.o     \xE2\x80\x94 object file\n"
    "    <source>.error \xE2\x80\x94 error/warning log\n";

/// Options that are one word and set one thing.
struct WordOption {
  std::string_view word;
  void (*apply)(Options&);
};
constexpr WordOption kWordOptions[] = {
    {"-morv", [](Options& o) { o.target.script = true; }},
    {"-morvquiet", [](Options& o) { o.target.quiet = true; }},
    {"-rtl", [](Options& o) { o.rtl = true; }},
    {"-cpu32", [](Options& o) { o.target.cpu_size = o.target.address_size = 32; }},
    {"-cpu64", [](Options& o) { o.target.cpu_size = o.target.address_size = 64; }},
    {"-addr32", [](Options& o) { o.address_override = 32; }},
    {"-addr64", [](Options& o) { o.address_override = 64; }},
    {"-pic", [](Options& o) { o.target.pic = true; }},
    {"-compress", [](Options& o) { o.target.compress = true; }},
    {"compress", [](Options& o) { o.target.compress = true; }},
    {"-Werr", [](Options& o) { o.target.warnings_as_errors = true; }},
    {"-Werror", [](Options& o) { o.target.warnings_as_errors = true; }},
    {"-debug", [](Options& o) { o.target.debug_symbols = 1; }},
    {"-nodebug", [](Options& o) { o.target.debug_symbols = -1; }},
    {"-llmtrace", [](Options& o) { o.llmtrace = true; }},
};

constexpr std::string_view kFormatOptions[] = {"exe=", "-exe=", "exeformat=", "-exeformat="};

struct CoreName {
  std::string_view name;
  Core core;
  int xlen;             ///< 0 leaves it as it is
  int multiply_divide;  ///< -1 leaves it as it is
};
constexpr CoreName kCores[] = {
    {"aarch64", Core::kAArch64, 0, -1}, {"arm64", Core::kAArch64, 0, -1}, {"a64", Core::kAArch64, 0, -1},
    {"rv64", Core::kRiscV, 64, 1},      {"riscv64", Core::kRiscV, 64, 1}, {"rv64im", Core::kRiscV, 64, 1},
    {"riscv64im", Core::kRiscV, 64, 1}, {"rv32i", Core::kRiscV, 0, 0},    {"riscv32i", Core::kRiscV, 0, 0},
    {"rv32", Core::kRiscV, 0, 1},       {"riscv32", Core::kRiscV, 0, 1},  {"rv32im", Core::kRiscV, 0, 1},
    {"riscv32im", Core::kRiscV, 0, 1},
};

std::optional<int> SetFormat(const std::string& value, Options* options) {
  const int format = ExeFormatFromName(value);
  if (format >= 0) {
    options->target.exe_format = format;
    return std::nullopt;
  }
  std::fprintf(
      stderr, "vorc: error: unknown executable format '%s'\n      expected one of: native (or vx), elf, pe\n",
      value.c_str());
  return kExitError;
}

std::optional<int> SetCore(const std::string& value, Options* options) {
  for (const CoreName& core : kCores) {
    if (core.name != value) continue;
    options->target.core = core.core;
    if (core.xlen != 0) options->target.xlen = core.xlen;
    if (core.multiply_divide >= 0) options->target.multiply_divide = core.multiply_divide == 1;
    return std::nullopt;
  }
  std::fprintf(
      stderr,
      "vorc: error: unknown core '%s'\n      known: rv32i (base ISA), rv32im / rv32 (with multiply-divide)\n",
      value.c_str());
  return kExitError;
}

void SetOptimization(const std::string& argument, Options* options) {
  const long level = std::strtol(argument.c_str() + 2, nullptr, 10);
  options->target.optimization_level = static_cast<int>(level);
  if (level <= kHighestOptimization) return;
  std::fprintf(stderr, "vorc: warning: -o%d requested; the highest level implemented is -o%d, using that\n",
               static_cast<int>(level), kHighestOptimization);
  options->target.optimization_level = kHighestOptimization;
}

void AddPositional(const std::string& argument, Options* options) {
  if (!options->has_source) {
    options->has_source = true;
    options->source = argument;
  } else if (options->script_arguments.size() < kMostScriptArguments) {
    options->script_arguments.push_back(argument);
  }
}

bool ApplyWordOption(std::string_view argument, Options* options) {
  for (const WordOption& option : kWordOptions) {
    if (option.word != argument) continue;
    option.apply(*options);
    return true;
  }
  return false;
}

}  // namespace

std::optional<int> ParseOptions(const std::vector<std::string>& arguments, Options* options) {
  for (const std::string& argument : arguments) {
    if (argument == "--version" || argument == "-version") {
      options->version = true;
      return std::nullopt;
    }
  }
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (ApplyWordOption(argument, options)) continue;
    if (argument == "--") {
      for (++i; i < arguments.size(); ++i) {
        if (options->script_arguments.size() < kMostScriptArguments)
          options->script_arguments.push_back(arguments[i]);
      }
      break;
    }
    bool taken = false;
    for (const std::string_view prefix : kFormatOptions) {
      if (!argument.starts_with(prefix)) continue;
      if (auto status = SetFormat(argument.substr(prefix.size()), options)) return status;
      taken = true;
      break;
    }
    if (taken) continue;
    if (argument.starts_with("-core=")) {
      if (auto status = SetCore(argument.substr(6), options)) return status;
    } else if (argument.starts_with("-o") && argument.size() > 2 &&
               std::isdigit(static_cast<unsigned char>(argument[2]))) {
      SetOptimization(argument, options);
    } else if (argument.starts_with("-I") && argument.size() > 2) {
      if (options->target.include_paths.size() < kMostIncludePaths)
        options->target.include_paths.push_back(argument.substr(2));
    } else if (argument == "-D" && i + 1 < arguments.size()) {
      // With the table full only the `-D` goes, and its value is looked at as an argument.
      if (options->defines.size() < kMostDefines) options->defines.push_back(arguments[++i]);
    } else if (argument.starts_with("-D") && argument.size() > 2) {
      if (options->defines.size() < kMostDefines) options->defines.push_back(argument.substr(2));
    } else {
      AddPositional(argument, options);
    }
  }
  return std::nullopt;
}

std::optional<int> SettleWidths(Options* options) {
  if (options->target.script) {
    if (options->target.cpu_size != 64) {
      if (!options->target.quiet)
        std::fputs("vorc: -morv overrides -cpu32; generating 64-bit (CPUSIZE 64)\n", stderr);
      options->target.cpu_size = options->target.address_size = 64;
    }
    if (options->address_override != 0 && !options->target.quiet) {
      std::fprintf(stderr, "vorc: -morv runs on the 64-bit host; ignoring -addr%d\n",
                   options->address_override);
    }
    return std::nullopt;
  }
  if (options->address_override != 0) options->target.address_size = options->address_override;
  if (options->target.address_size > options->target.cpu_size) {
    std::fprintf(stderr,
                 "vorc: error: address bus (%d) is wider than the data registers (%d) - a pointer would not "
                 "fit in a register\n",
                 options->target.address_size, options->target.cpu_size);
    return kExitError;
  }
  if (options->rtl) {
    std::fputs(
        "vorc: -rtl requires -morv as well.\n"
        "      RTL generation reads the script through the MORV front\n"
        "      end, so both belong on the command line:\n"
        "          vorc -morv -rtl <script.morv>\n",
        stderr);
    return kExitMisuse;
  }
  return std::nullopt;
}

std::string BuildQueryString(const std::vector<std::string>& arguments, bool escape_plus) {
  constexpr size_t kName = sizeof "QUERY_STRING=" - 1;  // the limits count the variable's name
  constexpr size_t kPairBegins = 8129;
  constexpr size_t kValueEnds = 8183;
  std::string text;
  int number = 0;
  for (const std::string& argument : arguments) {
    ++number;
    if (text.size() + kName >= kPairBegins) continue;
    if (!text.empty()) text += '&';
    text += std::to_string(number) + "=";
    for (const char c : argument) {
      if (text.size() + kName > kValueEnds) break;
      switch (c) {
        case '&': text += "%26"; break;
        case '=': text += "%3D"; break;
        case ' ': text += "%20"; break;
        case '%': text += "%25"; break;
        case '+': text += escape_plus ? "%2B" : "+"; break;
        default: text += c;
      }
    }
  }
  return text;
}

void PrintUsage() {
  std::fputs(kUsage, stderr);
}

}  // namespace vorc
