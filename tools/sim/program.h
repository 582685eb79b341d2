#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "sim/instruction_set.h"

namespace vorc::sim {

// Where things lie before a base is added. All addresses stay below 2 GiB, so that 32 bits hold them. The
// room between the regions belongs to nobody: what reaches there is a fault.
inline constexpr uint64_t kCodeAddress = 0x00010000;
inline constexpr uint64_t kDataAddress = 0x10000000;
inline constexpr uint64_t kStackEndAddress = 0x7f000000;
inline constexpr uint64_t kInstructionBytes = 4;
inline constexpr uint64_t kMaxCodeInstructions = (kDataAddress - kCodeAddress) / kInstructionBytes / 2;
inline constexpr uint64_t kMaxBase = 0x20000000;
inline constexpr uint64_t kDefaultDataBytes = uint64_t{64} << 20;
inline constexpr uint64_t kMaxDataBytes = uint64_t{512} << 20;

/// A decoded instruction. Registers a and b are sources, d is the destination; kConstantRegister reads the
/// constant. For kJump the constant is the index of the target.
struct Instruction {
  Operation operation = Operation::kNop;
  uint8_t width = 8;  // bytes that memory is read or written in
  uint8_t shift = 0;  // 64 less the bits that operands and results have
  uint8_t d = 0;
  uint8_t a = 0;
  uint8_t b = 0;
  uint8_t detail = 0;
  int64_t constant = 0;
};
inline constexpr int kConstantRegister = kRegisterCount;

/// What is known of an instruction's place in the text.
struct Origin {
  uint32_t line = 0;         // of the assembly text, from 1
  uint32_t source_line = 0;  // of the compiled source, 0 if the text doesn't tell
  uint32_t procedure = 0;
  std::string_view text;  // the line without its comments
};

struct Procedure {
  std::string name;
  uint32_t first = 0;  // index of its first instruction
};

struct DataSymbol {
  std::string name;
  uint64_t address = 0;  // with the base
  uint64_t count = 0;    // elements
  int width = 1;         // bytes of one
  bool is_array = false;
};

/// An assembled file, placed at its base.
struct Program {
  std::vector<char> text;  // with blanks in place of comments; the origins point into it
  int cpu_bits = 64;
  int address_bits = 64;
  bool pic = false;
  uint64_t base = 0;
  std::vector<Instruction> code;
  std::vector<Origin> origins;  // one an instruction
  std::vector<Procedure> procedures;
  std::vector<uint8_t> data;  // from DataBegin on
  std::vector<DataSymbol> symbols;
  std::vector<std::string> undefined;                   // names for kUndefined
  std::unordered_map<std::string, uint64_t> addresses;  // procedures and data by name, with the base

  uint64_t CodeBegin() const { return base + kCodeAddress; }
  uint64_t DataBegin() const { return base + kDataAddress; }
  uint64_t AddressOf(uint64_t index) const { return CodeBegin() + index * kInstructionBytes; }
};

}  // namespace vorc::sim
