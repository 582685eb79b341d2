#include "sim/instruction_set.h"

#include <array>
#include <charconv>
#include <string>
#include <unordered_map>

#include "base/ascii.h"

namespace vorc::sim {
namespace {

constexpr InstructionRow Row(std::string_view stem, Operation operation, Form form, DefaultSize size,
                             uint8_t detail, std::string_view meaning) {
  return {stem, operation, form, size, detail, meaning};
}

using enum Operation;
using enum Form;
using enum DefaultSize;

constexpr InstructionRow kRows[] = {
#define INSTRUCTION(stem, operation, form, size, detail, meaning) \
  Row(stem, operation, form, size, detail, meaning),
#include "sim/instructions.def"
#undef INSTRUCTION
};

// Registers that bear names of their own, by number; those that are a row of one name and a number stand
// below.
struct NamedRegister {
  std::string_view name;
  int number;
};
constexpr NamedRegister kNamed[] = {
    {"CODEBASE", 3},     {"STATUS", 18},        {"SRCREG", 19},
    {"DESTREG", 20},     {"SRCINDEXREG", 21},   {"DESTINDEXREG", 22},
    {"SRCSIZEREG", 23},  {"DESTSIZEREG", 24},   {"STACKPTR", 25},
    {"FRAMEPTR", 26},    {"STACKBEGIN", 27},    {"STACKEND", 28},
    {"LR", 29},          {"EPC", 30},           {"PC", 31},
    {"VBR", 32},         {"DEBUG_CONTROL", 37}, {"CORE_CONTROL", 38},
    {"OSBLOCK", 39},     {"BADADDRESS", 40},    {"CYCLECOUNT", 41},
    {"CPUID", 42},       {"CPUVERSION", 43},    {"RETURN_REG", 60},
    {"RETURN_REG2", 59},
};

struct RegisterRow {
  std::string_view prefix;
  int first;  // number in the name
  int last;
  int number;  // of the register that bears the first
};
constexpr RegisterRow kRegisterRows[] = {
    {"GPR", 0, 9, 4},
    {"GPR", 10, 19, 44},
    {"GPR", 20, 26, 54},
    {"RR", 0, 63, 0},
    {"R", 0, 63, 0},
    {"KERNELREG", 0, 2, 0},
    {"DATA_BREAK_POINT", 0, 3, 14},
    {"ADDRESS_BREAK_POINT", 0, 3, 33},
};

std::string Upper(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = AsciiUpper(c);
  return upper;
}

size_t DigitsAtEnd(std::string_view text) {
  size_t count = 0;
  while (count < text.size() && IsAsciiDigit(text[text.size() - 1 - count])) ++count;
  return count;
}

}  // namespace

std::span<const InstructionRow> InstructionTable() {
  return kRows;
}

std::string_view FormText(Form form) {
  switch (form) {
    case kAlu: return "d,a,b or d,b";
    case kUnary: return "d,a or d";
    case kOneRegister: return "d";
    case kCompare: return "a,b";
    case kConstant: return "d,constant";
    case kMoveForm: return "d,a";
    case kMemory: return "d,[a] or d,[a,b] or d,[name]";
    case kAddressOf: return "d,name";
    case kTarget: return "label or register";
    case kCallForm: return "name or register";
    case kToLink:
    case kNoOperand:
    case kAnything: break;
  }
  return "";
}

std::optional<Mnemonic> FindMnemonic(std::string_view word) {
  static const auto* const rows = [] {
    auto* map = new std::unordered_map<std::string_view, const InstructionRow*>;
    for (const InstructionRow& row : kRows) map->emplace(row.stem, &row);
    return map;
  }();
  const std::string upper = Upper(word);
  const size_t digits = DigitsAtEnd(upper);
  const std::string_view suffix = std::string_view(upper).substr(upper.size() - digits);
  const auto found = rows->find(std::string_view(upper).substr(0, upper.size() - digits));
  if (found == rows->end()) return std::nullopt;
  if (suffix.empty()) return Mnemonic{found->second, 0};
  const bool known = suffix == "1" || suffix == "2" || suffix == "4" || suffix == "8";
  if (!known || found->second->size == kNoSize) return std::nullopt;
  return Mnemonic{found->second, suffix[0] - '0'};
}

int FindRegister(std::string_view name) {
  const std::string upper = Upper(name);
  for (const NamedRegister& named : kNamed) {
    if (upper == named.name) return named.number;
  }
  const size_t digits = DigitsAtEnd(upper);
  if (digits == 0 || digits > 2) return -1;
  int number = 0;
  std::from_chars(upper.data() + upper.size() - digits, upper.data() + upper.size(), number);
  const std::string_view prefix = std::string_view(upper).substr(0, upper.size() - digits);
  for (const RegisterRow& row : kRegisterRows) {
    if (prefix == row.prefix && number >= row.first && number <= row.last)
      return row.number + number - row.first;
  }
  return -1;
}

}  // namespace vorc::sim
