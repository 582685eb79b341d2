// vorc-sim: assembles what the compiler wrote and runs it.

#include <charconv>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "base/format.h"
#include "sim/assembler.h"
#include "sim/machine.h"
#include "sim/scanner.h"

namespace {

using vorc::Format;
using vorc::sim::Argument;

constexpr int kExitFault = 1;
constexpr int kExitUsage = 2;
constexpr uint64_t kShownElements = 32;

constexpr const char* kUsage =
    "usage: vorc-sim [options] x.asm [function [arguments]]\n"
    "Assembles what vorc wrote and runs a function of it, main without a name, and prints its result.\n"
    "An argument is a number, a number and the bytes it is pushed in (5:4), or &name for an address.\n"
    "\n"
    "  --call \"f 1 2\"   call one more function; may stand many times, memory lives on between the calls\n"
    "  --calls FILE     the calls that stand in the lines of a file; - is standard input\n"
    "  --globals        print all variables after the last call\n"
    "  --count          print how many instructions were executed\n"
    "  --trace          print each instruction on standard error\n"
    "  --steps N        give a call up after N instructions (1000000000)\n"
    "  --stack BYTES    size of the stack (1048576)\n"
    "  --memory BYTES   what all variables may take (67108864)\n"
    "  --gap BYTES      free bytes behind each variable (0)\n"
    "  --base ADDRESS   where the program is placed (0, or 0x1000000 for -pic output)\n"
    "  --instructions   print the table of instructions and end\n"
    "  --version, --help\n";

struct Options {
  std::string file;
  std::vector<std::vector<std::string>> calls;
  bool plain = false;  // one call from the words of the command line: its result stands alone
  bool globals = false;
  bool count = false;
  bool trace = false;
  vorc::sim::Limits limits;
  vorc::sim::AssemblyOptions assembly;
};

[[noreturn]] void Die(const std::string& message, int status) {
  std::fflush(stdout);
  std::fprintf(stderr, "vorc-sim: %s\n", message.c_str());
  std::exit(status);
}

uint64_t NumberOption(const std::string& name, const std::string& text, uint64_t limit) {
  int64_t value = 0;
  if (!vorc::sim::ParseNumber(text, 8, &value) || value < 0 || static_cast<uint64_t>(value) > limit) {
    Die(Format("%s wants a number up to %" PRIu64 ", not '%s'", name.c_str(), limit, text.c_str()),
        kExitUsage);
  }
  return static_cast<uint64_t>(value);
}

std::vector<std::string> Words(const std::string& line) {
  std::vector<std::string> words;
  for (const char c : line + " ") {
    const bool blank = std::strchr(" \t\r,()", c) != nullptr;
    if (blank && (words.empty() || !words.back().empty())) words.emplace_back();
    if (!blank && words.empty()) words.emplace_back();
    if (!blank) words.back() += c;
  }
  while (!words.empty() && words.back().empty()) words.pop_back();
  if (!words.empty() && words.front().empty()) words.erase(words.begin());
  return words;
}

void ReadCalls(const std::string& path, Options* options) {
  std::ifstream file;
  if (path != "-") file.open(path);
  std::istream& stream = path == "-" ? std::cin : file;
  if (!stream) Die("can't read " + path, kExitUsage);
  for (std::string line; std::getline(stream, line);) {
    std::vector<std::string> words = Words(line);
    if (!words.empty() && words[0][0] != '#') options->calls.push_back(std::move(words));
  }
}

void PrintInstructions() {
  std::printf("| Mnemonic | Operands | Meaning |\n|---|---|---|\n");
  for (const vorc::sim::InstructionRow& row : vorc::sim::InstructionTable()) {
    if (row.operation == vorc::sim::Operation::kSystem) continue;
    std::printf("| `%.*s` | %.*s | %.*s |\n", static_cast<int>(row.stem.size()), row.stem.data(),
                static_cast<int>(FormText(row.form).size()), FormText(row.form).data(),
                static_cast<int>(row.meaning.size()), row.meaning.data());
  }
}

// Takes an option that stands alone; false if the word is none of these.
bool TakeFlag(const std::string& word, Options* options) {
  if (word == "--help") {
    std::fputs(kUsage, stdout);
    std::exit(0);
  } else if (word == "--version") {
    std::puts("vorc-sim " VORC_VERSION);
    std::exit(0);
  } else if (word == "--instructions") {
    PrintInstructions();
    std::exit(0);
  }
  bool* const flag = word == "--globals" ? &options->globals
                     : word == "--count" ? &options->count
                     : word == "--trace" ? &options->trace
                                         : nullptr;
  if (flag != nullptr) *flag = true;
  return flag != nullptr;
}

bool TakeValue(const std::string& word, const std::string& value, Options* options) {
  if (word == "--call") {
    options->calls.push_back(Words(value));
    if (options->calls.back().empty()) Die("--call wants a function", kExitUsage);
  } else if (word == "--calls") {
    ReadCalls(value, options);
  } else if (word == "--steps") {
    options->limits.steps = NumberOption(word, value, INT64_MAX);
  } else if (word == "--stack") {
    options->limits.stack_bytes = NumberOption(word, value, vorc::sim::kMaxStackBytes);
  } else if (word == "--memory") {
    options->assembly.data_bytes = NumberOption(word, value, vorc::sim::kMaxDataBytes);
  } else if (word == "--gap") {
    options->assembly.gap = NumberOption(word, value, vorc::sim::kMaxDataBytes);
  } else if (word == "--base") {
    options->assembly.base = NumberOption(word, value, vorc::sim::kMaxBase) & ~uint64_t{15};
  } else {
    return false;
  }
  return true;
}

Options ParseCommandLine(int argc, char** argv) {
  Options options;
  int i = 1;
  for (; i < argc && std::strncmp(argv[i], "--", 2) == 0; ++i) {
    const std::string word = argv[i];
    if (TakeFlag(word, &options)) continue;
    if (i + 1 >= argc || !TakeValue(word, argv[i + 1], &options)) {
      Die("unknown option or missing value: " + word + "\n" + kUsage, kExitUsage);
    }
    ++i;
  }
  if (i == argc) Die(std::string("no file\n") + kUsage, kExitUsage);
  options.file = argv[i++];
  options.plain = options.calls.empty();
  if (i < argc) options.calls.insert(options.calls.begin(), std::vector<std::string>(argv + i, argv + argc));
  if (options.calls.empty()) options.calls.push_back({"main"});
  return options;
}

Argument ParseArgument(const std::string& text, const vorc::sim::Machine& machine) {
  Argument argument;
  if (text[0] == '&') {
    const auto address = machine.FindAddress(std::string_view(text).substr(1));
    if (!address) Die("no variable or procedure '" + text.substr(1) + "'", kExitUsage);
    argument.value = *address;
    return argument;
  }
  const size_t colon = text.find(':');
  int64_t value = 0;
  if (!vorc::sim::ParseNumber(text.substr(0, colon), 8, &value))
    Die("bad argument '" + text + "'", kExitUsage);
  argument.value = static_cast<uint64_t>(value);
  if (colon == std::string::npos) return argument;
  const std::string width = text.substr(colon + 1);
  if (width != "1" && width != "2" && width != "4" && width != "8")
    Die("bad argument '" + text + "'", kExitUsage);
  argument.width = width[0] - '0';
  return argument;
}

std::string CallText(const std::vector<std::string>& words) {
  std::string text = words[0] + "(";
  for (size_t i = 1; i < words.size(); ++i) text += (i > 1 ? ", " : "") + words[i];
  return text + ")";
}

void PrintElement(const uint8_t* bytes, int width) {
  if (width > 8) {
    std::fputs("0x", stdout);
    for (int i = width; i-- > 0;) std::printf("%02x", bytes[i]);
    return;
  }
  uint64_t value = 0;
  std::memcpy(&value, bytes, static_cast<size_t>(width));
  const int shift = 64 - 8 * width;
  std::printf("%" PRId64, static_cast<int64_t>(value << shift) >> shift);
}

void PrintGlobals(const vorc::sim::Program& program, const vorc::sim::Machine& machine) {
  for (const vorc::sim::DataSymbol& symbol : program.symbols) {
    const auto bytes = machine.Bytes(symbol);
    std::printf("%s", symbol.name.c_str());
    if (symbol.is_array) std::printf("[%" PRIu64 "]", symbol.count);
    std::fputs(" =", stdout);
    for (uint64_t i = 0; i < symbol.count && i < kShownElements; ++i) {
      std::fputc(' ', stdout);
      PrintElement(bytes.data() + i * static_cast<uint64_t>(symbol.width), symbol.width);
    }
    std::puts(symbol.count > kShownElements ? " ..." : "");
  }
}

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::error_code ignored;
  if (!file || std::filesystem::is_directory(path, ignored)) Die("can't read " + path, kExitUsage);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

void RunCalls(const Options& options, vorc::sim::Machine* machine) {
  for (const std::vector<std::string>& words : options.calls) {
    std::vector<Argument> arguments;
    for (size_t i = 1; i < words.size(); ++i) arguments.push_back(ParseArgument(words[i], *machine));
    std::string fault;
    const auto result = machine->Call(words[0], arguments, &fault);
    if (!result) Die(options.file + ": " + fault, kExitFault);
    if (!options.plain) std::printf("%s = ", CallText(words).c_str());
    std::printf("%" PRId64 "\n", *result);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const Options options = ParseCommandLine(argc, argv);
  vorc::sim::AssemblyError error;
  const auto program = vorc::sim::Assemble(ReadFile(options.file), options.assembly, &error);
  if (!program)
    Die(Format("%s: line %u: %s", options.file.c_str(), error.line, error.message.c_str()), kExitFault);
  vorc::sim::Machine machine(*program, options.limits);
  if (options.trace) machine.TraceTo(stderr);
  RunCalls(options, &machine);
  if (options.globals) PrintGlobals(*program, machine);
  if (options.count) std::printf("%" PRIu64 " instructions\n", machine.Steps());
  if (std::fflush(stdout) != 0) Die("can't write the result", kExitFault);
  return 0;
}
